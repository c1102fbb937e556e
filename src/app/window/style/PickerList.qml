pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvalen

/// The list that a picker opens. One list serves all pickers of a page.
T.Popup {
    id: popup

    property Picker picker: null
    property list<string> details ///< a second line for each entry: the folder of its file
    property string playingPath ///< path of the playing file

    readonly property int gap: 4 ///< between the list and its picker
    readonly property int edge: 8 ///< distance to the edges of the window

    property point pointerAt ///< last position of the pointer; negative until it is known

    /// Opens below the picker, or above it, where there is more space. Never covers the picker.
    function openAt(which: Picker, secondLines: list<string>) {
        picker = which
        details = secondLines
        list.model = which.labels
        list.currentIndex = which.currentIndex
        const place = which.mapToItem(parent, 0, 0)
        width = Math.max(which.width, 200)
        x = Math.max(edge, Math.min(place.x, parent.width - width - edge))
        const top = place.y + which.height + gap
        const above = place.y - gap - edge
        const below = parent.height - edge - top
        const wanted = Math.min(list.contentHeight + padding * 2, parent.height * 0.6)
        const opensBelow = wanted <= below || below >= above
        height = Math.min(wanted, opensBelow ? below : above)
        y = opensBelow ? top : place.y - gap - height
        pointerAt = Qt.point(-1, -1)
        open()
        list.positionViewAtIndex(Math.max(0, list.currentIndex), ListView.Contain)
    }

    function choose(index: int) {
        const which = picker
        close()
        if (which && index >= 0)
            which.chosen(index)
    }

    /// Makes the entry under the pointer the current one, but only if the pointer has moved. Entries can also move
    /// under a resting pointer, when the list opens or scrolls.
    function pointTo(index: int, at: point) {
        const moved = pointerAt.x >= 0 && at !== pointerAt
        pointerAt = at
        if (moved)
            list.currentIndex = index
    }

    /// Moves to the next entry that starts with the letter.
    function jumpTo(letter: string) {
        const first = letter.toLocaleLowerCase()
        for (let step = 1; step <= list.count; ++step) {
            const index = (Math.max(-1, list.currentIndex) + step) % list.count
            if (picker && (picker.labels[index] ?? "").toLocaleLowerCase().startsWith(first)) {
                list.currentIndex = index
                return
            }
        }
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
        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(height / 46) - 1)
            event.accepted = true
            switch (event.key) {
            case Qt.Key_Return:
            case Qt.Key_Enter:
                // Ignores a key that has been held down since it opened the list.
                if (!event.isAutoRepeat)
                    popup.choose(currentIndex)
                break
            case Qt.Key_P:
                if (currentIndex >= 0 && !event.isAutoRepeat)
                    popup.picker?.previewed(currentIndex)
                break
            case Qt.Key_Space: // acts on release, because the picker would otherwise get the release
                break
            case Qt.Key_Home:
                currentIndex = 0
                break
            case Qt.Key_End:
                currentIndex = count - 1
                break
            case Qt.Key_PageUp:
                currentIndex = Math.max(0, currentIndex - page)
                break
            case Qt.Key_PageDown:
                currentIndex = Math.min(count - 1, currentIndex + page)
                break
            default:
                event.accepted = event.text > " " && event.key !== Qt.Key_Delete && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier))
                if (event.accepted)
                    popup.jumpTo(event.text)
            }
        }
        Keys.onReleased: event => {
            event.accepted = event.key === Qt.Key_Space
            if (event.accepted && !event.isAutoRepeat)
                popup.choose(currentIndex)
        }
        Accessible.role: Accessible.List
        Accessible.name: "Choose match"

        delegate: Pressable {
            id: entry

            required property int index
            required property string modelData
            readonly property bool current: popup.picker !== null && index === popup.picker.currentIndex

            text: modelData
            width: list.width
            implicitHeight: Theme.high(46)
            focusPolicy: Qt.NoFocus
            spokenRole: Accessible.ListItem
            spokenDetail: popup.details[index] ?? ""
            ticked: current
            onClicked: popup.choose(index)

            HoverHandler {
                onPointChanged: if (hovered) popup.pointTo(entry.index, point.scenePosition)
            }

            contentItem: Item {
                Symbol {
                    x: 6
                    anchors.verticalCenter: parent.verticalCenter
                    name: "checkmark"
                    color: Theme.accentText
                    size: 14
                    visible: entry.current
                }
                SymbolButton {
                    readonly property bool playing: popup.playingPath !== "" && entry.spokenDetail === popup.playingPath

                    anchors.right: parent.right
                    anchors.rightMargin: 8
                    anchors.verticalCenter: parent.verticalCenter
                    focusPolicy: Qt.NoFocus
                    text: playing ? "Pause" : "Play"
                    symbol: playing ? "pause.fill" : "play.fill"
                    color: Theme.secondary
                    onClicked: popup.picker?.previewed(entry.index)

                    HoverTip {
                        text: "Listen without choosing (P)"
                        shown: (parent as SymbolButton)?.hovered ?? false
                    }
                }
                Column {
                    anchors.verticalCenter: parent.verticalCenter
                    x: 28
                    width: parent.width - x - 44
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
