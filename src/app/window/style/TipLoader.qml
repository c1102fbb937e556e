import QtQuick
import Orvalen

/// Creates the tool tip of a control when the pointer enters the control.
Loader {
    id: loader

    required property string tip
    required property bool hovered
    property bool dismissed: false ///< hides the tip until the pointer leaves the control

    active: tip !== "" && hovered && !dismissed
    onHoveredChanged: dismissed = false
    source: Qt.resolvedUrl("HoverTip.qml") // not an inline component: types derived from our controls cannot create it
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
