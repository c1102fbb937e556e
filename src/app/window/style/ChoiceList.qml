pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvalen

/// A list from which the user chooses one file. P, or the button at an entry's right end, plays an entry without
/// choosing it.
ListView {
    id: list

    property list<string> labels
    property list<string> details ///< a second line for each entry: the path of its file
    property string playingPath ///< path of the playing file, in the form of `details`
    property int pickedIndex: -1 ///< the entry with a check mark
    property string spokenName

    readonly property real entryHeight: Theme.high(46)
    readonly property int entriesInSight: Math.max(1, Math.floor(height / entryHeight) - 1)

    signal chosen(int index)
    signal previewed(int index)
    signal soughtBy(real seconds)
    /// Emitted if Up is pressed on the first entry.
    signal passedUp()

    property point pointerAt ///< last position of the pointer; negative until it is known

    function forgetPointer() { pointerAt = Qt.point(-1, -1) }

    function goBy(entries: int) { currentIndex = Math.max(0, Math.min(count - 1, currentIndex + entries)) }

    /// Makes the entry under the pointer the current one, but only if the pointer has moved. Entries can also move
    /// under a resting pointer, when the list opens or scrolls.
    function pointTo(index: int, at: point) {
        const moved = pointerAt.x >= 0 && at !== pointerAt
        pointerAt = at
        if (moved)
            currentIndex = index
    }

    /// Moves to the next entry that starts with the letter.
    function jumpTo(letter: string) {
        const index = Initials.next(labels, letter, currentIndex)
        if (index >= 0)
            currentIndex = index
    }

    model: labels
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: true
    highlightMoveDuration: 0
    T.ScrollBar.vertical: ThinScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: spokenName
    Keys.onPressed: event => {
        const control = event.modifiers & (Qt.ControlModifier | Qt.AltModifier)
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Return:
        case Qt.Key_Enter:
            // Ignores a key that has been held down since it opened the list.
            if (!event.isAutoRepeat)
                chosen(currentIndex)
            return
        case Qt.Key_Space: // acts on release, because the picker would otherwise get the release
            return
        case Qt.Key_Home:
            return goBy(-count)
        case Qt.Key_End:
            return goBy(count)
        case Qt.Key_PageUp:
            return goBy(-entriesInSight)
        case Qt.Key_PageDown:
            return goBy(entriesInSight)
        }
        if (event.key === Qt.Key_Up && currentIndex <= 0)
            passedUp()
        else if (control && (event.key === Qt.Key_Left || event.key === Qt.Key_Right))
            soughtBy(event.key === Qt.Key_Left ? -15 : 15)
        else if (event.key === Qt.Key_P && !control) {
            if (currentIndex >= 0 && !event.isAutoRepeat)
                previewed(currentIndex)
        } else if (event.text > " " && event.key !== Qt.Key_Delete && !control)
            jumpTo(event.text)
        else
            event.accepted = false
    }
    Keys.onReleased: event => {
        event.accepted = event.key === Qt.Key_Space
        if (event.accepted && !event.isAutoRepeat)
            chosen(currentIndex)
    }

    delegate: Pressable {
        id: entry

        required property int index
        required property string modelData
        readonly property bool picked: index === list.pickedIndex

        text: modelData
        width: list.width
        implicitHeight: list.entryHeight
        focusPolicy: Qt.NoFocus
        spokenRole: Accessible.ListItem
        spokenDetail: list.details[index] ?? ""
        ticked: picked
        onClicked: list.chosen(index)

        HoverHandler {
            onPointChanged: if (hovered) list.pointTo(entry.index, point.scenePosition)
        }

        contentItem: Item {
            Symbol {
                x: 6
                anchors.verticalCenter: parent.verticalCenter
                name: "checkmark"
                color: Theme.accentText
                size: 14
                visible: entry.picked
            }
            SymbolButton {
                readonly property bool playing: list.playingPath !== "" && (entry.spokenDetail === list.playingPath
                    || entry.spokenDetail === "chosen earlier · " + list.playingPath)

                anchors.right: parent.right
                anchors.rightMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                focusPolicy: Qt.NoFocus
                text: playing ? "Pause" : "Play"
                symbol: playing ? "pause.fill" : "play.fill"
                color: Theme.secondary
                tip: "Listen without choosing (P)"
                onClicked: list.previewed(entry.index)
            }
            Column {
                anchors.verticalCenter: parent.verticalCenter
                x: list.pickedIndex < 0 ? 10 : 28
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
            color: Qt.rgba(Theme.accent.r, Theme.accent.g, Theme.accent.b, entry.ListView.isCurrentItem ? 0.22 : 0)
        }
    }
}
