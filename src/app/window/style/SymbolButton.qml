import QtQuick
import QtQuick.Templates as T
import Orvalen

/// A borderless button that shows nothing but its symbol; its text is for those who cannot see it.
T.AbstractButton {
    id: button

    required property string symbol
    property color color: Theme.text

    implicitWidth: 28
    implicitHeight: 28
    opacity: enabled ? 1 : Theme.disabledOpacity
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: button.symbol
            color: button.color
            size: 17
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: Qt.rgba(Theme.ink.r, Theme.ink.g, Theme.ink.b, button.down ? 0.16 : button.hovered ? 0.09 : 0)

        FocusRing { shown: button.visualFocus }
    }
}
