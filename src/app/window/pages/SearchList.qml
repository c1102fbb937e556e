pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvalen

/// The list of tracks that resemble a text, with a field for the text. One list serves all rows of the page.
T.Popup {
    id: popup

    required property SearchState search

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

    modal: true
    focus: true
    padding: 6
    T.Overlay.modal: Item {}
    onClosed: search.end()

    Connections {
        target: popup.search
        function onFound() {
            list.model = popup.search.labels
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
                const page = Math.max(1, Math.floor(list.height / 46) - 1)
                event.accepted = true
                switch (event.key) {
                case Qt.Key_Return:
                case Qt.Key_Enter:
                    // The list may still show the results for an earlier text.
                    if (!event.isAutoRepeat && popup.search.answered === text)
                        popup.choose(list.currentIndex)
                    break
                case Qt.Key_Down:
                    list.currentIndex = Math.min(list.count - 1, list.currentIndex + 1)
                    break
                case Qt.Key_Up:
                    list.currentIndex = Math.max(0, list.currentIndex - 1)
                    break
                case Qt.Key_PageDown:
                    list.currentIndex = Math.min(list.count - 1, list.currentIndex + page)
                    break
                case Qt.Key_PageUp:
                    list.currentIndex = Math.max(0, list.currentIndex - page)
                    break
                default:
                    event.accepted = false
                }
            }
        }

        ListView {
            id: list

            anchors.top: field.bottom
            anchors.topMargin: 6
            anchors.bottom: parent.bottom
            width: parent.width
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            T.ScrollBar.vertical: ThinScrollBar {}
            Accessible.role: Accessible.List
            Accessible.name: "Tracks in the library"

            delegate: ListEntry {
                required property int index
                required property string modelData

                text: modelData
                detail: popup.search.paths[index] ?? ""
                highlighted: ListView.isCurrentItem
                width: list.width
                onClicked: popup.choose(index)
            }
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
