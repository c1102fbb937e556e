pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvalen

/// The list that a picker opens; one for all the pickers of a page.
T.Popup {
    id: popup

    property Picker picker: null
    property list<string> details ///< a second line for each entry

    /// Opens under the picker, or over it where there is no room below.
    function openAt(which: Picker, secondLines: list<string>) {
        picker = which
        details = secondLines
        list.model = which.labels
        list.currentIndex = which.currentIndex
        const place = which.mapToItem(parent, 0, 0)
        width = Math.max(which.width, 200)
        height = Math.min(list.contentHeight, Math.max(120, parent.height * 0.6)) + padding * 2
        x = Math.max(8, Math.min(place.x, parent.width - width - 8))
        const below = place.y + which.height + 4
        y = below + height <= parent.height - 8 ? below : Math.max(8, place.y - height - 4)
        open()
        list.positionViewAtIndex(Math.max(0, list.currentIndex), ListView.Contain)
    }

    function choose(index: int) {
        const which = picker
        close()
        if (which && index >= 0)
            which.chosen(index)
    }

    modal: true
    focus: true
    padding: 5
    T.Overlay.modal: Item {}
    onClosed: {
        picker = null
        list.model = []
        details = []
    }

    ListView {
        id: list

        anchors.fill: parent
        clip: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        T.ScrollBar.vertical: ThinScrollBar {}
        Keys.onReturnPressed: popup.choose(currentIndex)
        Keys.onEnterPressed: popup.choose(currentIndex)
        Keys.onSpacePressed: popup.choose(currentIndex)
        Accessible.role: Accessible.List
        Accessible.name: "Choose match"

        delegate: Pressable {
            id: entry

            required property int index
            required property string modelData
            readonly property bool current: popup.picker !== null && index === popup.picker.currentIndex

            text: modelData
            width: list.width
            implicitHeight: 46
            focusPolicy: Qt.NoFocus
            spokenRole: Accessible.ListItem
            spokenDetail: popup.details[index] ?? ""
            ticked: current
            onClicked: popup.choose(index)
            onHoveredChanged: if (hovered) list.currentIndex = index

            contentItem: Item {
                Symbol {
                    x: 6
                    anchors.verticalCenter: parent.verticalCenter
                    name: "checkmark"
                    color: Theme.accentText
                    size: 14
                    visible: entry.current
                }
                Column {
                    anchors.verticalCenter: parent.verticalCenter
                    x: 28
                    width: parent.width - x - 12
                    spacing: 1

                    Label {
                        width: parent.width
                        text: entry.text
                        font.pixelSize: Theme.subheadline
                        elide: Text.ElideMiddle
                        Accessible.ignored: true
                    }
                    Label {
                        width: parent.width
                        text: entry.spokenDetail
                        font.pixelSize: Theme.smallestCaption
                        color: Theme.secondary
                        elide: Text.ElideMiddle
                        Accessible.ignored: true
                    }
                }
            }
            background: Rectangle {
                radius: 5
                color: Qt.rgba(Theme.accent.r, Theme.accent.g, Theme.accent.b,
                               entry.ListView.isCurrentItem ? 0.22 : 0)
            }
        }
    }
    background: Rectangle {
        radius: Theme.boxRadius
        color: Theme.panel
        border.color: Theme.controlLine
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.quick }
    }
}
