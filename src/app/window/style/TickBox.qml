import QtQuick
import QtQuick.Templates as T
import Orvalen

/// A checkbox; asks to be ticked and shows what it is told.
T.AbstractButton {
    id: box

    required property bool value
    signal ticked(bool on)

    implicitWidth: leftPadding + square.width + 7 + Math.ceil(caption.implicitWidth) + rightPadding
    implicitHeight: 28
    leftPadding: 4
    rightPadding: 6
    opacity: enabled ? 1 : Theme.disabledOpacity
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    font.pixelSize: Theme.subheadline
    onClicked: ticked(!value)

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: value
    Accessible.onPressAction: if (enabled) clicked()
    Accessible.onToggleAction: if (enabled) clicked()

    Item {
        anchors.fill: parent
        anchors.leftMargin: box.leftPadding
        anchors.rightMargin: box.rightPadding
        z: 1

        Rectangle {
            id: square

            anchors.verticalCenter: parent.verticalCenter
            width: 18
            height: 18
            radius: 5
            color: box.value ? (box.hovered ? Theme.accentHovered : Theme.accent)
                          : (box.hovered ? Theme.controlHovered : Theme.control)
            border.width: box.value ? 0 : 1
            border.color: Theme.secondary

            Symbol {
                anchors.centerIn: parent
                name: "checkmark"
                color: Theme.accentInk
                size: 14
                visible: box.value
            }
        }
        Label {
            id: caption

            anchors.left: square.right
            anchors.leftMargin: 7
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: box.text
            font.pixelSize: box.font.pixelSize
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: Qt.rgba(Theme.ink.r, Theme.ink.g, Theme.ink.b, box.down ? 0.1 : box.hovered ? 0.05 : 0)

        FocusRing { shown: box.visualFocus }
    }
}
