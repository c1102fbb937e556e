import QtQuick
import QtQuick.Layouts
import Orvalen

/// The selected track of a row, with its play button. Has a glowing frame while it plays.
Item {
    id: details

    required property string fileLine
    required property bool splitsPlaylist ///< the path has a line break, so it takes two lines of the playlist
    required property string tempoLine
    required property bool hasTempo
    required property bool pauses
    required property bool playing
    signal toggled()
    signal focused()
    readonly property alias button: play

    implicitHeight: Theme.high(30)

    // The shadow: several transparent frames, two points lower.
    Repeater {
        model: details.playing ? 4 : 0

        Rectangle {
            required property int index

            anchors.fill: parent
            anchors.margins: -index
            anchors.topMargin: 2 - index
            anchors.bottomMargin: -2 - index
            radius: Theme.radius + index
            color: Qt.rgba(1, 0.62, 0.04, 0.3 / 4)
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: details.playing ? Theme.mix(Theme.panel, Theme.accent, 0.2) : Theme.panel
        border.width: 1
        border.color: details.playing ? Theme.accent : Theme.line
    }
    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 4
        anchors.rightMargin: 10
        spacing: 10

        PushButton {
            id: play

            text: details.pauses ? "Pause" : "Play"
            symbol: details.pauses ? "pause.fill" : "play.fill"
            textSize: Theme.footnote
            implicitHeight: Theme.high(24)
            tip: "P"
            Layout.preferredWidth: Math.max(84, implicitWidth)
            onClicked: details.toggled()
            onActiveFocusChanged: if (activeFocus) details.focused()
        }
        Label {
            Layout.fillWidth: true
            text: details.fileLine
            font.pixelSize: Theme.caption
            elide: Text.ElideMiddle
            maximumLineCount: 1
        }
        Label {
            visible: details.splitsPlaylist
            text: "Line break in the file name"
            font.pixelSize: Theme.caption
            color: Theme.danger
            Accessible.description: tip.text

            HoverHandler { id: pointer }
            HoverTip {
                id: tip

                text: "The playlist gets two lines for this file. Rename the file and scan again."
                shown: pointer.hovered
            }
        }
        Label {
            text: details.tempoLine
            font.pixelSize: Theme.caption
            font.weight: details.hasTempo ? Font.DemiBold : Font.Normal
            color: details.hasTempo ? Theme.text : Theme.secondary
        }
    }
}
