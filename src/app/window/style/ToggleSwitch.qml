import QtQuick
import Orvalen

/// A switch. Shows `ticked` and emits `switched`; the page changes `ticked`.
Pressable {
    id: toggle

    property int textSize: Theme.body
    signal switched(bool on)

    implicitWidth: groove.width + 9 + Math.ceil(caption.implicitWidth)
    implicitHeight: Theme.high(28)
    onClicked: switched(!ticked)

    spokenRole: Accessible.CheckBox
    background: null // the focus ring is around the groove

    Item {
        anchors.fill: parent

        Rectangle {
            id: groove

            anchors.verticalCenter: parent.verticalCenter
            width: 36
            height: 20
            radius: 10
            color: toggle.ticked ? (toggle.hovered ? Theme.accentHovered : Theme.accent)
                             : (toggle.hovered ? Theme.controlHovered : Theme.track)
            border.width: toggle.ticked ? 0 : 1
            border.color: Theme.secondary

            Rectangle {
                x: toggle.ticked ? parent.width - width - 2 : 2
                y: 2
                width: 16
                height: 16
                radius: 8
                color: toggle.ticked ? Theme.accentInk : Theme.secondary

                Behavior on x { NumberAnimation { duration: Theme.quick } }
            }
            FocusRing {
                inner: 10
                shown: toggle.visualFocus
            }
        }
        Label {
            id: caption

            anchors.left: groove.right
            anchors.leftMargin: 9
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: toggle.text
            font.pixelSize: toggle.textSize
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
}
