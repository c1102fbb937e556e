import QtQuick
import QtQuick.Templates as T
import Orvalen

/// On or off; asks to be switched and shows what it is told.
T.AbstractButton {
    id: toggle

    required property bool value
    property int textSize: Theme.body
    signal switched(bool on)

    implicitWidth: groove.width + 9 + Math.ceil(caption.implicitWidth)
    implicitHeight: 28
    opacity: enabled ? 1 : Theme.disabledOpacity
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    onClicked: switched(!value)

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

        Rectangle {
            id: groove

            anchors.verticalCenter: parent.verticalCenter
            width: 36
            height: 20
            radius: 10
            color: toggle.value ? (toggle.hovered ? Theme.accentHovered : Theme.accent)
                             : (toggle.hovered ? Theme.controlHovered : Theme.track)
            border.width: toggle.value ? 0 : 1
            border.color: Theme.secondary

            Rectangle {
                x: toggle.value ? parent.width - width - 2 : 2
                y: 2
                width: 16
                height: 16
                radius: 8
                color: toggle.value ? Theme.accentInk : Theme.secondary

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
