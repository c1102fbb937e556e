import QtQuick
import Orvalen

/// Says for two seconds that the playlist was written. Slides in from the top edge, over the page, so that no control
/// moves away from the pointer.
Item {
    id: banner

    required property bool shown
    property real progress: shown ? 1 : 0

    implicitWidth: message.implicitWidth + 32
    implicitHeight: 44
    visible: progress > 0
    clip: true

    Behavior on progress { NumberAnimation { duration: 350; easing.type: Easing.InOutQuad } }

    Rectangle {
        y: 8 - 44 * (1 - banner.progress)
        width: banner.width
        height: 34
        radius: height / 2
        opacity: banner.progress
        color: Theme.mix(Theme.window, Theme.success, 0.12)
        border.color: Theme.mix(Theme.window, Theme.success, 0.4)

        Label {
            id: message

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
