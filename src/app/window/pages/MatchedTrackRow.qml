import QtQuick
import QtQuick.Layouts
import Orvalen

/// One row: the request, its candidates, the selected track, and whether the playlist contains it.
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
    required property bool splitsPlaylist
    required property string tempoLine
    required property bool hasTempo
    required property bool pauses
    required property bool playing
    required property bool included
    required property int decision
    required property list<string> suggestions ///< names of tracks that may be meant
    required property var takes ///< function that returns whether the row accepts the dragged files

    /// Values that reach() and leaving() accept instead of an index into `controls`.
    enum Place { First = 100, Last }

    /// Emitted when a control of the row gets the focus.
    signal focused(Item control)
    /// Asks to move the focus `by` rows further, to the given control.
    signal leaving(int by, int control)
    signal previewToggled()
    signal browsed()
    signal findOpened(Item control)
    signal suggestionTaken(int suggestion)
    signal suggestionPreviewed(int suggestion)
    signal dropped(var urls)
    signal ticked(bool on)
    signal chosen(int option)
    signal optionPreviewed(int option)
    signal pickerOpened(Picker picker)

    /// The controls that can have the focus, in reading order.
    readonly property var controls: [picker, details.button, ...suggested.buttons, browse, find, include]

    function firstControl(): int {
        return controls.findIndex(control => control.visible)
    }

    function reach(which: int) {
        const place = which === MatchedTrackRow.First ? firstControl() : which
        const wanted = controls[place]?.visible ? controls[place] : include
        wanted.forceActiveFocus(Qt.TabFocusReason)
    }

    function focusedControl(): int {
        return controls.findIndex(control => control.activeFocus)
    }

    // When a suggestion is taken, its button disappears. Moves the focus to the first control of the row.
    onHasTrackChanged: if (hasTrack && suggested.buttons.some(button => button.activeFocus)) afterTaking.start()

    Timer {
        id: afterTaking

        interval: 0
        onTriggered: row.reach(MatchedTrackRow.First)
    }

    /// Handles Backtab on a control. On the first control, asks to move the focus to the row before and returns true.
    /// Otherwise returns false, and Qt moves the focus to the control before.
    function leavesBackwards(control: int): bool {
        if (control !== firstControl())
            return false
        leaving(-1, MatchedTrackRow.Last)
        return true
    }

    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_P && !(event.modifiers & Qt.ControlModifier)
        if (event.accepted && hasTrack && !event.isAutoRepeat)
            previewToggled()
    }
    Keys.onUpPressed: leaving(-1, focusedControl())
    Keys.onDownPressed: leaving(1, focusedControl())

    implicitHeight: column.implicitHeight + 3
    height: implicitHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: label
    Accessible.description: (index + 1) + " of " + ListView.view?.count + ", " + mark.meaning

    DropArea {
        id: dropArea

        anchors.fill: parent
        keys: ["text/uri-list"]
        onEntered: drag => drag.accepted = row.takes(drag.urls)
        onDropped: drop => {
            row.dropped(drop.urls)
            drop.accept(Qt.CopyAction)
        }

        Rectangle {
            anchors.fill: parent
            visible: dropArea.containsDrag
            radius: Theme.radius
            color: Theme.mix(Theme.window, Theme.accent, 0.2)
            border.width: 2
            border.color: Theme.accent
        }
    }

    DecisionMark {
        id: mark

        y: 6
        decision: row.decision
    }

    ColumnLayout {
        id: column

        x: 30
        y: 3
        width: row.width - x
        spacing: 2

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 0

            Caption {
                Layout.fillWidth: true
                text: row.label
                elide: Text.ElideMiddle
                Accessible.ignored: true // part of the row's name
            }
            Label {
                Layout.fillWidth: true
                text: row.header
                font.pixelSize: Theme.body
                font.weight: row.bold ? Font.Bold : Font.Normal
                elide: Text.ElideMiddle
                Accessible.ignored: true // the row's name and the tempo label say the same
            }
        }

        Picker {
            id: picker

            Layout.fillWidth: true
            visible: row.options.length > 1
            implicitHeight: 26
            labels: row.options
            currentIndex: row.picked
            spokenName: "Choose match"
            tip: "Opens the list (Space, F4 or Alt+Down). P plays."
            spokenDetail: currentLabel === "" ? mark.meaning : currentLabel + ", " + mark.meaning
            onChosen: option => row.chosen(option)
            onPreviewed: option => row.optionPreviewed(option)
            onOpened: row.pickerOpened(this)
            onActiveFocusChanged: if (activeFocus) row.focused(this)
            Keys.onBacktabPressed: event => event.accepted = row.leavesBackwards(0)
        }

        TrackDetails {
            id: details

            Layout.fillWidth: true
            visible: row.hasTrack
            fileLine: row.fileLine
            splitsPlaylist: row.splitsPlaylist
            tempoLine: row.tempoLine
            hasTempo: row.hasTempo
            pauses: row.pauses
            playing: row.playing
            onToggled: row.previewToggled()
            onFocused: row.focused(details.button)
            button.spokenDetail: mark.meaning
            button.Keys.onBacktabPressed: event => event.accepted = row.leavesBackwards(1)
        }

        Suggestions {
            id: suggested

            Layout.fillWidth: true
            names: row.suggestions
            onTaken: suggestion => row.suggestionTaken(suggestion)
            onPreviewed: suggestion => row.suggestionPreviewed(suggestion)
            onFocused: control => row.focused(control)
            Keys.onBacktabPressed: event => event.accepted = row.leavesBackwards(row.focusedControl())
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 14

            PushButton {
                id: browse

                text: "Browse for file"
                implicitHeight: Theme.high(24)
                textSize: Theme.footnote
                spokenDetail: mark.meaning
                onClicked: row.browsed()
                onActiveFocusChanged: if (activeFocus) row.focused(this)
                Keys.onBacktabPressed: event => event.accepted = row.leavesBackwards(row.controls.indexOf(browse))
            }
            PushButton {
                id: find

                text: "Find in library"
                tip: "Looks for similar artists and titles"
                implicitHeight: Theme.high(24)
                textSize: Theme.footnote
                onClicked: row.findOpened(this)
                onActiveFocusChanged: if (activeFocus) row.focused(this)
            }
            TickBox {
                id: include

                Layout.fillWidth: true
                Layout.maximumWidth: implicitWidth
                text: "Include in playlist"
                tip: "Space; Ctrl+Z takes it back"
                implicitHeight: Theme.high(24)
                spokenDetail: mark.meaning
                ticked: row.included
                onSwitched: on => row.ticked(on)
                onActiveFocusChanged: if (activeFocus) row.focused(this)
                Keys.onTabPressed: row.leaving(1, MatchedTrackRow.First)
            }
        }

        Divider {
            Layout.fillWidth: true
        }
    }
}
