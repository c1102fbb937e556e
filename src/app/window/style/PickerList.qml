import QtQuick
import QtQuick.Templates as T
import Orvalen

/// The list that a picker opens. One list serves all pickers of a page.
T.Popup {
    id: popup

    property Picker picker: null
    property alias playingPath: list.playingPath
    signal soughtBy(real seconds)

    readonly property int gap: 4 ///< between the list and its picker
    readonly property int edge: 8 ///< distance to the edges of the window

    /// Opens below the picker, or above it, where there is more space. Never covers the picker.
    function openAt(which: Picker, secondLines: list<string>) {
        picker = which
        list.details = secondLines
        list.labels = which.labels
        list.pickedIndex = list.currentIndex = which.currentIndex
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
        list.forgetPointer()
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
        list.labels = []
        list.details = []
    }

    ChoiceList {
        id: list

        anchors.fill: parent
        focus: true
        spokenName: "Choose match"
        onChosen: index => popup.choose(index)
        onPreviewed: index => popup.picker?.previewed(index)
        onSoughtBy: seconds => popup.soughtBy(seconds)
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
