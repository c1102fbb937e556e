import QtQuick
import QtQuick.Layouts
import Orvalen

/// The title of the results page, the auto-save indicator and "Close".
RowLayout {
    id: header

    required property bool autoSaving
    signal closed()

    height: Theme.high(46)
    spacing: 0

    Label {
        Layout.fillWidth: true
        Layout.leftMargin: 16
        Layout.topMargin: 7
        Layout.bottomMargin: 7
        text: "Playlist Results"
        font.pixelSize: Theme.largeTitle
        font.weight: Font.Bold
        elide: Text.ElideRight
        Accessible.role: Accessible.Heading
    }
    Item {
        id: sign

        Layout.rightMargin: 8
        implicitWidth: 24
        implicitHeight: Theme.high(24)
        Accessible.role: Accessible.Graphic
        Accessible.name: "Auto-save enabled"
        Accessible.description: header.autoSaving ? "saving" : ""

        Symbol {
            anchors.centerIn: parent
            name: "arrow.triangle.2.circlepath"
            color: Theme.success
            size: 20
            rotation: header.autoSaving ? 360 : 0

            Behavior on rotation { NumberAnimation { duration: 2000 } }
        }
        HoverHandler { id: pointer }
        HoverTip {
            text: "Auto-save enabled"
            shown: pointer.hovered
        }
    }
    PushButton {
        Layout.rightMargin: 16
        text: "Close"
        tip: "Escape"
        onClicked: header.closed()
    }
}
