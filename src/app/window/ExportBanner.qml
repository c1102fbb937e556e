import QtQuick
import Orvalen

/// Says for a moment that the playlist was written; slides in from above as it fades in.
Item {
    id: banner

    required property bool shown
    property real progress: shown ? 1 : 0

    implicitHeight: Math.round(36 * progress)
    visible: progress > 0
    clip: true

    Behavior on progress { NumberAnimation { duration: 350; easing.type: Easing.InOutQuad } }

    Rectangle {
        y: -36 * (1 - banner.progress)
        width: banner.width
        height: 36
        opacity: banner.progress
        color: Qt.rgba(Theme.success.r, Theme.success.g, Theme.success.b, 0.12)

        Label {
            anchors.fill: parent
            text: "✅ Playlist Exported Successfully!"
            font.pixelSize: Theme.headline
            font.weight: Font.DemiBold
            color: Theme.success
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
            Accessible.role: Accessible.AlertMessage
        }
    }
}
