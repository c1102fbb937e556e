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
    contentSpacing: 6
    padding: 10

    // Not in a row layout: the height of the picker depends on its width, which a layout sets too late.
    Item {
        Layout.fillWidth: true
        implicitHeight: format.height

        Label {
            id: caption

            anchors.verticalCenter: parent.verticalCenter
            width: Math.ceil(implicitWidth)
            text: "Export Format:"
            font.pixelSize: Theme.subheadline
        }
        Segmented {
            id: format

            anchors.left: caption.right
            anchors.leftMargin: 10
            anchors.right: parent.right
            name: "Export Format"
            textSize: Theme.caption
            labels: options.exports.formats
            currentIndex: options.exports.formatIndex
            onChosen: index => options.exports.formatIndex = index
        }
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
    Caption {
        Layout.fillWidth: true
        Layout.minimumHeight: roomiest.implicitHeight // reserved, so that showing a tip moves nothing below
        text: options.exports.tip
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
            id: exportButton

            text: "Export Playlist"
            prominent: true
            tip: "Ctrl+E"
            enabled: options.exports.canExport
            onClicked: options.exports.exportPlaylist()
        }
        PushButton {
            id: saveButton

            text: "Save Session"
            tip: "Ctrl+S"
            onClicked: options.exports.saveSession()
        }
        PushButton {
            id: copyButton

            text: "Copy Missing"
            tip: "Copies the rows without a file, one a line"
            visible: options.exports.lacksFiles
            onClicked: options.exports.copyMissing()
        }
        Caption {
            readonly property real beside: options.width - 24 - exportButton.width - saveButton.width
                                           - (copyButton.visible ? copyButton.width + 12 : 0) - 24

            visible: text !== ""
            width: Math.min(implicitWidth, beside < 160 ? options.width - 24 : beside) // too narrow: gets its own row
            height: exportButton.height
            text: options.exports.caption
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
        }
    }
}
