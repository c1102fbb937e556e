import QtQuick
import Orvalen

/// Shows one choice of several and opens a list of them. Keeps no state: it shows `currentIndex` and emits signals.
Pressable {
    id: picker

    required property list<string> labels
    required property int currentIndex
    signal chosen(int index)
    /// Asks to play or pause an entry without choosing it.
    signal previewed(int index)
    /// Asks the page to open the PickerList, which then emits this picker's `chosen`.
    signal opened()

    readonly property string currentLabel: labels[currentIndex] ?? ""

    implicitHeight: Theme.high(30)
    implicitWidth: 240
    leftPadding: 10
    rightPadding: 8
    spokenRole: Accessible.ComboBox
    spokenDetail: currentLabel
    font.pixelSize: Theme.subheadline
    onClicked: opened()

    Keys.onPressed: event => {
        const asks = event.key === Qt.Key_F4 || (event.key === Qt.Key_Down && (event.modifiers & Qt.AltModifier))
        if (asks)
            opened()
        event.accepted = asks
    }

    Item {
        anchors.fill: parent
        anchors.leftMargin: picker.leftPadding
        anchors.rightMargin: picker.rightPadding
        z: 1

        Label {
            anchors.left: parent.left
            anchors.right: arrow.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: picker.currentIndex < 0 ? picker.labels.length + " candidates: choose one" : picker.currentLabel
            font.pixelSize: picker.font.pixelSize
            color: picker.currentIndex < 0 ? Theme.accentText : Theme.text
            elide: Text.ElideMiddle
            Accessible.ignored: true
        }
        Symbol {
            id: arrow

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.up.down"
            color: Theme.secondary
            size: 15
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: picker.down ? Theme.controlPressed : picker.hovered ? Theme.controlHovered : Theme.control
        border.color: Theme.controlLine

        FocusRing { shown: picker.visualFocus }
    }
}
