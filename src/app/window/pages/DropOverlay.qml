import QtQuick
import QtQuick.Templates as T
import Orvalen

/// Accepts files that are dragged onto the window, and says what a drop would do.
DropArea {
    id: area

    required property Drops drops
    property string promise
    readonly property Item overlay: T.Overlay.overlay

    keys: ["text/uri-list"]
    onEntered: drag => {
        promise = drops.promise(drag.urls)
        // Also accepts the drag of files that cannot be taken, so that the overlay can show the reason.
        drag.accept(drops.canTake(drag.urls) ? Qt.CopyAction : Qt.IgnoreAction)
        drag.accepted = promise !== ""
    }
    onExited: promise = ""
    onDropped: drop => {
        promise = ""
        const takes = drops.canTake(drop.urls)
        drops.take(drop.urls)
        drop.accept(takes ? Qt.CopyAction : Qt.IgnoreAction)
    }

    Rectangle {
        parent: area.overlay.visible ? area.overlay : area // above pages and alerts
        z: 1000
        anchors.fill: parent
        anchors.margins: 8
        visible: area.promise !== ""
        radius: 14
        color: Qt.rgba(Theme.window.r, Theme.window.g, Theme.window.b, 0.9)
        border.width: 3
        border.color: Theme.accent

        Column {
            anchors.centerIn: parent
            width: parent.width - 48
            spacing: 12

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                name: "folder.badge.plus"
                color: Theme.accentText
                size: 48
            }
            Label {
                width: parent.width
                text: area.promise
                font.pixelSize: Theme.title
                font.weight: Font.DemiBold
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
            }
        }
    }
}
