import QtQuick
import QtQuick.Layouts
import Orvalen

/// One wanted song: what it may be, what was chosen, and whether it goes into the playlist.
Item {
    id: row

    required property int index
    required property string label
    required property string header
    required property bool bold
    required property list<string> options
    required property int picked
    required property bool hasTrack
    required property string fileLine
    required property string tempoLine
    required property bool hasTempo
    required property bool pauses
    required property bool playing
    required property bool included
    required property int decision

    signal focused()
    signal previewToggled()
    signal browsed()
    signal ticked(bool on)
    signal chosen(int option)
    signal pickerOpened(Picker picker)

    implicitHeight: column.implicitHeight + 12
    height: implicitHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: label
    Accessible.description: mark.meaning

    DecisionMark {
        id: mark

        y: 9
        decision: row.decision
    }

    ColumnLayout {
        id: column

        x: 30
        y: 6
        width: row.width - x
        spacing: 4

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 0

            Label {
                Layout.fillWidth: true
                text: row.label
                font.pixelSize: Theme.caption
                color: Theme.secondary
                elide: Text.ElideMiddle
            }
            Label {
                Layout.fillWidth: true
                text: row.header
                font.pixelSize: Theme.body
                font.weight: row.bold ? Font.Bold : Font.Normal
                elide: Text.ElideMiddle
            }
        }

        Picker {
            Layout.fillWidth: true
            visible: row.options.length > 1
            labels: row.options
            currentIndex: row.picked
            spokenName: "Choose match"
            onChosen: option => row.chosen(option)
            onOpened: row.pickerOpened(this)
            onActiveFocusChanged: if (activeFocus) row.focused()
        }

        TrackDetails {
            Layout.fillWidth: true
            visible: row.hasTrack
            fileLine: row.fileLine
            tempoLine: row.tempoLine
            hasTempo: row.hasTempo
            pauses: row.pauses
            playing: row.playing
            onToggled: row.previewToggled()
            onFocused: row.focused()
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 14

            PushButton {
                text: "Browse for file"
                textSize: Theme.footnote
                onClicked: row.browsed()
                onActiveFocusChanged: if (activeFocus) row.focused()
            }
            TickBox {
                Layout.fillWidth: true
                Layout.maximumWidth: implicitWidth
                text: "Include in playlist"
                ticked: row.included
                onSwitched: on => row.ticked(on)
                onActiveFocusChanged: if (activeFocus) row.focused()
            }
        }

        Divider {
            Layout.fillWidth: true
            Layout.topMargin: 4
        }
    }
}
