import QtQuick
import QtQuick.Layouts
import Orvalen

/// Starts a match run and shows its progress.
ColumnLayout {
    id: controls

    required property WantedState wanted

    spacing: 8

    Shortcut {
        sequences: ["Ctrl+Return", "Ctrl+Enter"]
        enabled: controls.wanted.onTop && controls.wanted.canMatch
        onActivated: controls.wanted.match()
    }

    Flow {
        Layout.fillWidth: true
        spacing: 12

        PushButton {
            text: "Match Playlist"
            symbol: "music.note.list"
            prominent: true
            tip: "Ctrl+Return"
            enabled: controls.wanted.canMatch
            onClicked: controls.wanted.match()
        }
        PushButton {
            text: "Back to Results"
            visible: controls.wanted.canReturn
            onClicked: controls.wanted.showResults()
        }
    }

    RowLayout {
        Layout.fillWidth: true
        visible: controls.wanted.matching
        spacing: 10

        Spinner {
            implicitWidth: 22
            implicitHeight: 22
        }
        Label {
            Layout.fillWidth: true
            text: controls.wanted.matchingText
            font.pixelSize: Theme.subheadline
            color: Theme.secondary
            elide: Text.ElideMiddle
        }
    }

    LinearProgress {
        Layout.fillWidth: true
        visible: controls.wanted.matchBarVisible
        label: "Matching..."
        value: controls.wanted.matchProgress

        Behavior on value {
            enabled: controls.wanted.matchBarVisible
            NumberAnimation { duration: 200 }
        }
    }
}
