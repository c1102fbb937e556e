pragma ComponentBehavior: Bound

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

    readonly property real bulkButtonsEnd: stack.x + bulkButtons.childrenRect.width

    contentWidth: width
    contentHeight: Math.max(height, stack.implicitHeight - list.implicitHeight + 190)
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: ThinScrollBar {}

    /// Hands the keys to the row at the position, or to what stands before or after the rows. The rows that exist are
    /// few and not in order, so the usual way from control to control does not lead through them.
    function reachRow(index: int, control: int) {
        if (index < 0) {
            before.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        } else if (index >= list.count) {
            after.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
        } else {
            list.positionViewAtIndex(index, ListView.Contain)
            const row = list.itemAtIndex(index) as MatchedTrackRow
            row?.reach(control)
        }
    }

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
            onActiveFocusChanged: if (activeFocus) body.reachRow(Math.max(0, list.indexAt(1, list.contentY + 1)), 4)
        }

        ListView {
            id: list

            Layout.fillWidth: true
            Layout.fillHeight: true
            implicitHeight: 190
            clip: true

            function lastInSight(): int {
                const index = indexAt(1, contentY + height - 2)
                return index < 0 ? count - 1 : index
            }

            boundsBehavior: Flickable.StopAtBounds
            cacheBuffer: 400
            reuseItems: true
            model: body.review.rows
            T.ScrollBar.vertical: ThinScrollBar { id: bar }
            Accessible.role: Accessible.List
            Accessible.name: "Results"

            delegate: MatchedTrackRow {
                width: list.width - 12
                onFocused: list.positionViewAtIndex(index, ListView.Contain)
                onLeaving: (by, control) => body.reachRow(index + by, control)
                onPreviewToggled: body.review.togglePreview(index)
                onBrowsed: body.review.browse(index)
                onTicked: on => body.review.include(index, on)
                onChosen: option => body.review.choose(index, option)
                onPickerOpened: picker => pickerList.openAt(picker, body.review.optionPaths(index))
            }
        }

        FocusScope {
            id: after

            activeFocusOnTab: true
            onActiveFocusChanged: if (activeFocus) body.reachRow(list.lastInSight(), -1)
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
