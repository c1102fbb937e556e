import QtQuick
import QtQuick.Layouts
import Orvalen

/// The three input modes for the wanted text.
ColumnLayout {
    id: input

    required property WantedState wanted
    required property ListHelpState listHelp
    required property int linesAtOnce

    spacing: 8

    Segmented {
        Layout.fillWidth: true
        name: "Input"
        labels: ["Track List", "Spotify Playlist", "DJEP CSV"]
        currentIndex: input.wanted.inputMode
        onChosen: index => input.wanted.inputMode = index
    }

    ColumnLayout {
        Layout.fillWidth: true
        visible: input.wanted.inputMode === 0
        spacing: 4

        Item {
            Layout.fillWidth: true
            implicitHeight: format.height

            Caption {
                id: caption

                anchors.verticalCenter: parent.verticalCenter
                width: Math.ceil(implicitWidth)
                text: "Input Format"
            }
            Segmented {
                id: format

                anchors.left: caption.right
                anchors.leftMargin: 10
                anchors.right: parent.right
                name: "Input Format"
                textSize: Theme.caption
                labels: ["Artist – Title", "Title – Artist"]
                currentIndex: input.wanted.formatIndex
                onChosen: index => input.wanted.formatIndex = index
            }
        }
        Disclosure {
            Layout.fillWidth: true
            title: "📄 Paste Format Help"

            Caption {
                Layout.fillWidth: true
                text: "• Paste tracks like 'Artist – Title', one per line."
                wrapMode: Text.Wrap
            }
            Caption {
                Layout.fillWidth: true
                text: "• Matching is case-insensitive and flexible."
                wrapMode: Text.Wrap
            }
        }
        WantedEditor {
            id: editor

            Layout.fillWidth: true
            wanted: input.wanted
            Component.onCompleted: input.listHelp.edit(editor.textDocument)
        }
        ListHelp {
            Layout.fillWidth: true
            help: input.listHelp
            linesAtOnce: input.linesAtOnce

            Connections {
                target: input.listHelp
                function onLineShown(position: int, length: int) { editor.show(position, length) }
            }
        }
    }

    InputField {
        Layout.fillWidth: true
        visible: input.wanted.inputMode === 1
        placeholderText: "Spotify playlist URL"
        text: input.wanted.spotifyAddress
        onTextEdited: input.wanted.spotifyAddress = text
    }

    ColumnLayout {
        Layout.fillWidth: true
        visible: input.wanted.inputMode === 2
        spacing: 8

        ToggleSwitch {
            Layout.maximumWidth: input.width
            text: "Ignore 'Do Not Play' Requests"
            textSize: Theme.caption
            ticked: input.wanted.ignoreDoNotPlay
            onSwitched: value => input.wanted.ignoreDoNotPlay = value
        }
        PushButton {
            text: "Import DJEP CSV"
            onClicked: input.wanted.importDJEP()
        }
    }
}
