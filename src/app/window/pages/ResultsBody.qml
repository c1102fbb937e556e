import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvalen

/// The rows, the controls for all rows, the preview, and the export. The rows take the remaining height. If it is too
/// small, everything scrolls.
Flickable {
    id: body

    required property ReviewState review
    required property SearchState search
    required property string leftOut ///< what the run says about left-out lines
    required property ExportState exports
    required property PreviewState preview

    property int lastAsked: -1 ///< the decision that N goes through; -1: all rows that are left to do

    function showRow(index: int) { list.positionViewAtIndex(index, ListView.Contain) }

    function goToNext(decision: int, by: int) {
        lastAsked = decision
        const row = review.next(decision, list.lastRow < 0 ? list.firstInSight() - by : list.lastRow, by)
        if (row >= 0)
            list.reachRow(row, MatchedTrackRow.First)
    }

    function findRow() { findField.start() }

    /// Moves the focus to the next part of the page: rows, export, controls above the rows.
    function goToNextPart(by: int) {
        const parts = [bulkButtons, list, exportOptions]
        let at = -1
        for (let i = 0; i < parts.length; ++i)
            if (parts[i].contains(parts[i].mapFromItem(Window.activeFocusItem, 0, 0)))
                at = i
        const next = parts[(at < 0 ? 1 : at + by + 3) % 3]
        if (next === list)
            list.reachRow(list.currentRow(), MatchedTrackRow.First)
        else
            next.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    }

    readonly property Item rowList: list
    readonly property real bulkButtonsEnd: stack.x + bulkButtons.childrenRect.width

    contentWidth: width
    contentHeight: Math.max(height, stack.implicitHeight - list.implicitHeight + 190)
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: ThinScrollBar {}

    PickerList {
        id: pickerList

        parent: T.Overlay.overlay
        playingPath: body.review.playingPath
        onSoughtBy: seconds => body.preview.seekBySeconds(seconds)
    }
    SearchList {
        id: searchList

        parent: T.Overlay.overlay
        search: body.search
        playingPath: body.review.playingPath
        onSoughtBy: seconds => body.preview.seekBySeconds(seconds)
    }

    ColumnLayout {
        id: stack

        x: 16
        width: body.width - 32
        height: body.contentHeight
        spacing: 0

        Flow {
            id: bulkButtons

            Layout.fillWidth: true
            Layout.topMargin: 6
            Layout.bottomMargin: 3
            spacing: 8

            PushButton {
                text: "Select All"
                symbol: "checkmark.circle.fill"
                textSize: Theme.footnote
                tip: "Ticks every row. Ctrl+Z takes it back."
                onClicked: body.review.includeAll(true)
            }
            PushButton {
                text: "Deselect All"
                symbol: "circle"
                textSize: Theme.footnote
                tip: "Unticks every row. Ctrl+Z takes it back."
                onClicked: body.review.includeAll(false)
            }
            PushButton {
                text: "Find"
                textSize: Theme.footnote
                plain: true
                visible: !findField.visible
                tip: "Finds a row by a part of its name (Ctrl+F)"
                onClicked: findField.start()
            }
            FindField {
                id: findField

                review: body.review
                onShown: row => body.showRow(row)
                onLeaving: list.reachRow(found < 0 ? list.currentRow() : found, MatchedTrackRow.First)
            }
        }
        Item {
            Layout.fillWidth: true
            Layout.bottomMargin: 2
            implicitHeight: Math.max(counts.height, summary.height)

            Caption {
                id: summary

                anchors.verticalCenter: parent.verticalCenter
                text: body.review.summary
            }
            Caption {
                anchors.left: summary.right
                anchors.leftMargin: 12
                anchors.right: counts.left
                anchors.rightMargin: 12
                anchors.verticalCenter: parent.verticalCenter
                text: body.leftOut
                elide: Text.ElideRight
            }
            ResultsCounts {
                id: counts

                anchors.right: parent.right
                review: body.review
                onAsked: decision => body.goToNext(decision, 1)
            }
        }

        ReviewNotices {
            Layout.bottomMargin: 6
            review: body.review
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
            search: body.search
            searchList: searchList
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
            id: exportOptions

            Layout.fillWidth: true
            Layout.topMargin: 8
            Layout.bottomMargin: 12
            exports: body.exports
        }
    }
}
