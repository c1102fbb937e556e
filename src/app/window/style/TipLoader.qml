import QtQuick
import Orvalen

/// Makes the hover help of a control when the pointer comes.
Loader {
    id: loader

    required property string tip
    required property bool hovered
    property bool dismissed: false ///< until the pointer leaves

    active: tip !== "" && hovered && !dismissed
    onHoveredChanged: dismissed = false
    source: Qt.resolvedUrl("HoverTip.qml") // no component of its own: controls that derive from ours could not make it
    onLoaded: showTip()
    onTipChanged: showTip()

    function showTip() {
        const help = item as HoverTip
        if (help) {
            help.text = tip
            help.shown = true
        }
    }
}
