import QtQuick
import QtQuick.Layouts
import Orvalen

/// A title that shows or hides the content below it.
ColumnLayout {
    id: disclosure

    required property string title
    property bool open: false
    property int textSize: Theme.subheadline
    default property alias content: inner.data

    spacing: 0

    Pressable {
        id: header

        text: disclosure.title
        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        implicitHeight: Theme.high(26)
        leftPadding: 2
        rightPadding: 6
        readonly property bool spokenExpanded: disclosure.open
        font.pixelSize: disclosure.textSize
        onClicked: disclosure.open = !disclosure.open

        contentItem: Row {
            spacing: 5

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "chevron.right"
                size: 12
                color: Theme.secondary
                rotation: disclosure.open ? 90 : 0

                Behavior on rotation { NumberAnimation { duration: Theme.quick } }
            }
            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: header.text
                font.pixelSize: header.font.pixelSize
                Accessible.ignored: true
            }
        }
    }
    ColumnLayout {
        id: inner

        Layout.leftMargin: 19
        Layout.fillWidth: true
        spacing: 2
        visible: disclosure.open
    }
}
