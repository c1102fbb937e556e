import QtQuick
import Orvalen

/// A button without border that shows only a symbol. Screen readers read its text.
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
