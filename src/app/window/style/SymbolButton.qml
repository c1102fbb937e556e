import QtQuick
import Orvalen

/// A borderless button that shows nothing but its symbol; its text is for those who cannot see it.
Pressable {
    id: button

    required property string symbol
    property color color: Theme.text

    implicitWidth: 28
    implicitHeight: 28

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: button.symbol
            color: button.color
            size: 17
        }
    }
}
