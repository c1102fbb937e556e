import QtQuick
import Orvalen

/// A check box. Shows `ticked` and emits `switched`; the page changes `ticked`.
Pressable {
    id: box

    signal switched(bool on)

    implicitWidth: leftPadding + square.width + 7 + Math.ceil(caption.implicitWidth) + rightPadding
    implicitHeight: Theme.high(28)
    leftPadding: 4
    rightPadding: 6
    font.pixelSize: Theme.subheadline
    onClicked: switched(!ticked)

    spokenRole: Accessible.CheckBox

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
            color: box.ticked ? (box.hovered ? Theme.accentHovered : Theme.accent)
                          : (box.hovered ? Theme.controlHovered : Theme.control)
            border.width: box.ticked ? 0 : 1
            border.color: Theme.secondary

            Symbol {
                anchors.centerIn: parent
                name: "checkmark"
                color: Theme.accentInk
                size: 14
                visible: box.ticked
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
}
