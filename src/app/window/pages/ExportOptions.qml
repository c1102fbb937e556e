pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Orvalen

/// The export format and the buttons that write files.
PanelBox {
    id: options

    required property ExportState exports

    title: "Export Options"
    symbol: "square.and.arrow.up"
    contentSpacing: 8

    Label {
        text: "Export Format:"
        font.pixelSize: Theme.subheadline
    }
    Segmented {
        Layout.fillWidth: true
        name: "Export Format"
        textSize: Theme.caption
        labels: options.exports.formats
        currentIndex: options.exports.formatIndex
        onChosen: index => options.exports.formatIndex = index
    }
    Flow {
        Layout.fillWidth: true
        spacing: 12

        Repeater {
            model: options.exports.howTos

            PushButton {
                required property int index
                required property string modelData

                text: modelData
                textSize: Theme.caption
                onClicked: options.exports.showHowTo(index)
            }
        }
    }
    Label {
        Layout.fillWidth: true
        Layout.minimumHeight: roomiest.implicitHeight // reserved, so that a tip moves nothing below
        text: options.exports.tip
        font.pixelSize: Theme.caption
        color: Theme.secondary
        wrapMode: Text.Wrap

        Label {
            id: roomiest

            visible: false
            width: parent.width
            text: options.exports.longestTip
            font: parent.font
            wrapMode: Text.Wrap
        }
    }
    Flow {
        Layout.fillWidth: true
        spacing: 12

        PushButton {
            text: "Export Playlist"
            prominent: true
            enabled: options.exports.canExport
            onClicked: options.exports.exportPlaylist()
        }
        PushButton {
            text: "Save Session"
            onClicked: options.exports.saveSession()
        }
    }
}
