import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvalen

/// The rows with what concerns them all, what is being played, and the export. The rows take what height is left;
/// where too little is left for them, everything scrolls.
Flickable {
    id: body

    required property ReviewState review
    required property ExportState exports
    required property PreviewState preview

    function showRow(index: int) { list.positionViewAtIndex(index, ListView.Contain) }

    readonly property Item rowList: list
    readonly property real bulkButtonsEnd: stack.x + bulkButtons.childrenRect.width

    contentWidth: width
    contentHeight: Math.max(height, stack.implicitHeight - list.implicitHeight + 190)
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: ThinScrollBar {}

    PickerList { id: pickerList; parent: T.Overlay.overlay }

    ColumnLayout {
        id: stack

        x: 16
        width: body.width - 32
        height: body.contentHeight
        spacing: 0

        Flow {
            id: bulkButtons

            Layout.fillWidth: true
            Layout.topMargin: 10
            Layout.bottomMargin: 6
            spacing: 8

            PushButton {
                text: "Select All"
                symbol: "checkmark.circle.fill"
                textSize: Theme.footnote
                onClicked: body.review.includeAll(true)
            }
            PushButton {
                text: "Deselect All"
                symbol: "circle"
                textSize: Theme.footnote
                onClicked: body.review.includeAll(false)
            }
        }
        Label {
            Layout.bottomMargin: 6
            text: body.review.summary
            font.pixelSize: Theme.caption
            color: Theme.secondary
        }

        FocusScope {
            id: before

            activeFocusOnTab: true
            onActiveFocusChanged: if (activeFocus) list.reachRow(list.firstInSight(), MatchedTrackRow.First)
        }

        ResultsList {
            id: list

            Layout.fillWidth: true
            Layout.fillHeight: true
            review: body.review
            pickerList: pickerList
            onPassed: forwards => (forwards ? after.nextItemInFocusChain(true) : before.nextItemInFocusChain(false))
                .forceActiveFocus(forwards ? Qt.TabFocusReason : Qt.BacktabFocusReason)
        }

        FocusScope {
            id: after

            activeFocusOnTab: true
            onActiveFocusChanged: if (activeFocus) list.reachRow(list.lastInSight(), MatchedTrackRow.Last)
        }

        NowPlaying {
            Layout.fillWidth: true
            Layout.topMargin: 8
            visible: body.preview.shown
            preview: body.preview
        }
        ExportOptions {
            Layout.fillWidth: true
            Layout.topMargin: 8
            Layout.bottomMargin: 12
            exports: body.exports
        }
    }
}
