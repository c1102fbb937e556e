import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvalen

/// A title that opens and closes what stands under it.
ColumnLayout {
    id: disclosure

    required property string title
    property bool open: false
    property int textSize: Theme.subheadline
    default property alias content: inner.data

    spacing: 0

    T.AbstractButton {
        id: header

        text: disclosure.title
        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        implicitHeight: 26
        leftPadding: 2
        rightPadding: 6
        hoverEnabled: true
        focusPolicy: Qt.StrongFocus
        font.pixelSize: disclosure.textSize
        onClicked: disclosure.open = !disclosure.open

        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        Accessible.role: Accessible.Button
        Accessible.name: text
        Accessible.description: disclosure.open ? "open" : "closed"
        Accessible.onPressAction: if (enabled) clicked()

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
        background: Rectangle {
            radius: Theme.radius
            color: Qt.rgba(Theme.ink.r, Theme.ink.g, Theme.ink.b, header.down ? 0.1 : header.hovered ? 0.05 : 0)

            FocusRing { shown: header.visualFocus }
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
