import QtQuick
import Orvalen

/// A button: prominent, bordered or plain, with an optional symbol before its text.
Pressable {
    id: button

    property string symbol
    property bool prominent: false
    property bool plain: false
    property bool destructive: false
    property int textSize: Theme.body

    readonly property color ink: prominent ? Theme.accentInk : destructive ? Theme.danger : Theme.text
    readonly property bool small: textSize < Theme.body

    implicitWidth: line.naturalWidth + leftPadding + rightPadding
    implicitHeight: Theme.high(small ? 28 : 32)
    leftPadding: plain ? 6 : small ? 10 : 13
    rightPadding: leftPadding
    font.pixelSize: textSize
    font.weight: prominent ? Font.DemiBold : Font.Medium

    Row {
        id: line

        readonly property real beforeText: drawing.visible ? drawing.width + spacing : 0
        readonly property real naturalWidth: beforeText + Math.ceil(caption.implicitWidth)

        anchors.centerIn: parent
        z: 1
        spacing: 7

        Symbol {
            id: drawing

            anchors.verticalCenter: parent.verticalCenter
            name: button.symbol
            visible: button.symbol !== ""
            color: button.prominent || button.destructive ? button.ink : Theme.accentText
            size: button.small ? 14 : 16
        }
        Label {
            id: caption

            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(Math.ceil(implicitWidth), button.availableWidth - line.beforeText)
            text: button.text
            font.pixelSize: button.textSize
            font.weight: button.font.weight
            color: button.ink
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        readonly property color fill: button.prominent
            ? (button.down ? Theme.accentPressed : button.hovered ? Theme.accentHovered : Theme.accent)
            : button.plain
            ? button.stateTint
            : (button.down ? Theme.controlPressed : button.hovered ? Theme.controlHovered : Theme.control)

        radius: Theme.radius
        color: fill
        border.width: button.prominent || button.plain ? 0 : 1
        border.color: Theme.controlLine

        FocusRing { shown: button.visualFocus }
    }
}
