import QtQuick
import Orvalen

/// An entry of a list: a text, a smaller text below it, and space for controls at its right end.
Pressable {
    id: entry

    property string detail
    property bool highlighted: false
    default property alias controls: end.data

    implicitHeight: 46
    focusPolicy: Qt.NoFocus
    spokenRole: Accessible.ListItem
    spokenDetail: detail

    Row {
        id: end

        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        z: 1
    }
    contentItem: Item {
        Column {
            anchors.verticalCenter: parent.verticalCenter
            x: 10
            width: end.x - x - 8
            spacing: 1

            Label {
                width: parent.width
                text: entry.text
                font.pixelSize: Theme.subheadline
                elide: Text.ElideMiddle
                Accessible.ignored: true
            }
            Label {
                width: parent.width
                text: entry.detail
                font.pixelSize: Theme.smallestCaption
                color: Theme.secondary
                elide: Text.ElideMiddle
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        radius: 5
        color: entry.highlighted ? Qt.rgba(Theme.accent.r, Theme.accent.g, Theme.accent.b, 0.22) : entry.stateTint
    }
}
