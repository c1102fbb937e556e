import QtQuick
import Orvalen

/// The frame around the focused control. Anchor it to fill the control.
Rectangle {
    property bool shown: false
    property int inner: Theme.radius

    anchors.fill: parent
    anchors.margins: -3
    visible: shown
    color: "transparent"
    radius: inner + 3
    border.width: 2
    border.color: Theme.focus
}
