pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvalen

/// The console lines of this run, over the main page, the newest last. A click selects a line, a drag or Shift several.
/// Selected lines can be copied.
T.Dialog {
    id: sheet

    required property LogModel log

    title: "Log"
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    parent: T.Overlay.overlay
    width: parent ? Math.min(860, parent.width - 32) : 600
    height: parent ? parent.height - 48 : 600
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: 24
    padding: 16

    onAboutToShow: {
        log.shown = true
        lines.unmark()
        lines.positionViewAtEnd()
    }
    onOpened: {
        lines.positionViewAtEnd()
        lines.forceActiveFocus()
    }
    onClosed: log.shown = false

    T.Overlay.modal: Rectangle {
        color: Theme.dim
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 10

        RowLayout {
            Layout.fillWidth: true
            spacing: 8

            Label {
                Layout.fillWidth: true
                text: "Log"
                font.pixelSize: Theme.headline
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
            }
            PushButton {
                text: "Copy All"
                enabled: lines.count > 0
                onClicked: sheet.log.copyAll()
            }
            PushButton {
                text: "Close"
                onClicked: sheet.close()
            }
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            radius: Theme.radius
            color: Theme.inset
            border.color: Theme.controlLine

            ListView {
                id: lines

                property int anchorRow: -1 ///< where the selection started; -1: no selection
                readonly property int firstMarked: Math.min(anchorRow, currentIndex)
                readonly property int lastMarked: anchorRow < 0 ? -1 : Math.max(anchorRow, currentIndex)
                property bool atNewest: true

                function unmark() {
                    anchorRow = -1
                    currentIndex = -1
                }
                function mark(row: int, extend: bool) {
                    if (row < 0 || row >= count)
                        return
                    currentIndex = row
                    if (!extend || anchorRow < 0)
                        anchorRow = row
                }

                anchors.fill: parent
                anchors.margins: 6
                model: sheet.log
                clip: true
                focus: true
                currentIndex: -1
                boundsBehavior: Flickable.StopAtBounds
                interactive: false // a drag selects lines
                highlightMoveDuration: 0
                T.ScrollBar.vertical: ThinScrollBar { policy: T.ScrollBar.AsNeeded }
                Accessible.role: Accessible.List
                Accessible.name: "Log lines"
                activeFocusOnTab: true

                onContentYChanged: atNewest = atYEnd
                onCountChanged: if (atNewest) newestTimer.restart()
                Timer { id: newestTimer; interval: 0; onTriggered: lines.positionViewAtEnd() }
                Connections {
                    target: sheet.log as QtObject
                    function onRowsRemoved(parent, first, last) {
                        lines.anchorRow = Math.max(-1, lines.anchorRow - (last - first + 1))
                    }
                }

                Keys.onPressed: event => {
                    const extend = (event.modifiers & Qt.ShiftModifier) !== 0
                    if (event.matches(StandardKey.Copy))
                        sheet.log.copy(firstMarked, lastMarked)
                    else if (event.matches(StandardKey.SelectAll)) {
                        anchorRow = 0
                        currentIndex = count - 1
                    } else if (event.key === Qt.Key_Up)
                        mark(Math.max(0, currentIndex < 0 ? count - 1 : currentIndex - 1), extend)
                    else if (event.key === Qt.Key_Down)
                        mark(Math.min(count - 1, currentIndex + 1), extend)
                    else if (event.key === Qt.Key_Home)
                        mark(0, extend)
                    else if (event.key === Qt.Key_End)
                        mark(count - 1, extend)
                    else
                        return
                    event.accepted = true
                }

                delegate: Rectangle {
                    id: entry

                    required property int index
                    required property string line
                    readonly property bool marked: index >= lines.firstMarked && index <= lines.lastMarked

                    width: lines.width
                    implicitHeight: words.implicitHeight + 4
                    color: marked ? Qt.rgba(Theme.accent.r, Theme.accent.g, Theme.accent.b, 0.25) : "transparent"
                    Accessible.role: Accessible.ListItem
                    Accessible.name: line
                    Accessible.selectable: true
                    Accessible.selected: marked

                    Label {
                        id: words

                        x: 4
                        y: 2
                        width: parent.width - 16
                        text: entry.line
                        font.pixelSize: Theme.caption
                        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                        Accessible.ignored: true
                    }
                }

                MouseArea {
                    anchors.fill: parent
                    anchors.rightMargin: 12 // for the scroll bar
                    preventStealing: true

                    function rowAt(event) {
                        return lines.indexAt(4, lines.contentY + Math.max(0, Math.min(height - 1, event.y)))
                    }
                    onPressed: event => {
                        lines.forceActiveFocus()
                        lines.mark(rowAt(event), (event.modifiers & Qt.ShiftModifier) !== 0)
                    }
                    onPositionChanged: event => lines.mark(rowAt(event), true)
                    onWheel: wheel => {
                        const lowest = lines.originY + Math.max(0, lines.contentHeight - lines.height)
                        lines.contentY = Math.max(lines.originY, Math.min(lowest, lines.contentY - wheel.angleDelta.y))
                    }
                }
            }
        }
    }
    background: Rectangle {
        radius: 12
        color: Theme.panel
        border.color: Theme.controlLine
    }
}
