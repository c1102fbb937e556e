import QtQuick
import Orvalen

/// Up to three tracks that a row without a candidate may mean.
Flow {
    id: flow

    required property list<string> names
    readonly property var buttons: [first, second, third]

    signal taken(int suggestion)
    signal previewed(int suggestion)
    signal focused(Item control)

    component Suggestion: PushButton {
        id: button

        required property string name
        signal previewed()

        visible: name !== ""
        text: name
        spokenName: "Did you mean " + name + "?"
        tip: "Takes this file. P plays it first."
        textSize: Theme.footnote
        implicitHeight: Theme.high(24)
        plain: true
        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_P && !(event.modifiers & Qt.ControlModifier)
            if (event.accepted && !event.isAutoRepeat)
                button.previewed()
        }
    }

    visible: names.length > 0
    spacing: 4

    Caption {
        height: 24
        verticalAlignment: Text.AlignVCenter
        text: "Did you mean:"
    }
    Suggestion {
        id: first

        name: flow.names[0] ?? ""
        width: Math.min(implicitWidth, flow.width)
        onClicked: flow.taken(0)
        onPreviewed: flow.previewed(0)
        onActiveFocusChanged: if (activeFocus) flow.focused(this)
    }
    Suggestion {
        id: second

        name: flow.names[1] ?? ""
        width: Math.min(implicitWidth, flow.width)
        onClicked: flow.taken(1)
        onPreviewed: flow.previewed(1)
        onActiveFocusChanged: if (activeFocus) flow.focused(this)
    }
    Suggestion {
        id: third

        name: flow.names[2] ?? ""
        width: Math.min(implicitWidth, flow.width)
        onClicked: flow.taken(2)
        onPreviewed: flow.previewed(2)
        onActiveFocusChanged: if (activeFocus) flow.focused(this)
    }
}
