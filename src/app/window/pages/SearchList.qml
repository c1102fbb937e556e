import QtQuick
import QtQuick.Templates as T
import Orvalen

/// The list of tracks that resemble a text, with a field for the text. One list serves all rows of the page.
T.Popup {
    id: popup

    required property SearchState search
    property alias playingPath: list.playingPath
    signal soughtBy(real seconds)

    /// Opens for the row, below the pressed control or above it, where there is more space.
    function openAt(control: Item, row: int) {
        const gap = 4
        const edge = 8
        const place = control.mapToItem(parent, 0, 0)
        const above = place.y - gap - edge
        const below = parent.height - edge - place.y - control.height - gap
        const opensBelow = below >= 320 || below >= above
        width = Math.min(560, parent.width - 2 * edge)
        height = Math.min(420, opensBelow ? below : above)
        x = Math.max(edge, Math.min(place.x, parent.width - width - edge))
        y = opensBelow ? place.y + control.height + gap : place.y - gap - height
        list.forgetPointer()
        field.text = search.begin(row)
        open()
        field.forceActiveFocus(Qt.PopupFocusReason)
        field.selectAll()
    }

    function choose(index: int) {
        if (index >= 0 && index < list.count) {
            search.attach(index)
            close()
        }
    }

    /// Moves the focus to the list, and the current entry by `by`.
    function enterList(by: int) {
        if (list.count > 0) {
            list.goBy(by)
            list.forceActiveFocus(Qt.OtherFocusReason)
        }
    }

    modal: true
    focus: true
    padding: 6
    T.Overlay.modal: Item {}
    onClosed: search.end()

    Connections {
        target: popup.search
        function onFound() {
            list.details = popup.search.paths
            list.labels = popup.search.labels
            list.currentIndex = list.count > 0 ? 0 : -1
        }
    }

    Item {
        anchors.fill: parent

        InputField {
            id: field

            width: parent.width
            placeholderText: "Find in library"
            maximumLength: 500
            onTextEdited: popup.search.look(text)
            Keys.onPressed: event => {
                event.accepted = true
                switch (event.key) {
                case Qt.Key_Return:
                case Qt.Key_Enter:
                    // The list may still show the results for an earlier text.
                    if (!event.isAutoRepeat && popup.search.answered === text)
                        popup.choose(list.currentIndex)
                    break
                case Qt.Key_Down:
                    popup.enterList(1)
                    break
                case Qt.Key_PageDown:
                    popup.enterList(list.entriesInSight)
                    break
                default:
                    event.accepted = false
                }
            }
        }

        ChoiceList {
            id: list

            anchors.top: field.bottom
            anchors.topMargin: 6
            anchors.bottom: parent.bottom
            width: parent.width
            activeFocusOnTab: true
            spokenName: "Tracks in the library"
            onChosen: index => popup.choose(index)
            onPreviewed: index => popup.search.preview(index)
            onSoughtBy: seconds => popup.soughtBy(seconds)
            onPassedUp: field.forceActiveFocus(Qt.OtherFocusReason)
        }

        Label {
            anchors.centerIn: list
            visible: list.count === 0 && popup.search.answered !== "" && popup.search.answered === field.text
            text: "Nothing like it in the library"
            font.pixelSize: Theme.subheadline
            color: Theme.secondary
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
