import QtQuick
import Orvalen

/// Up to three tracks that a row without a candidate may mean.
Flow {
    id: flow

    required property list<string> names
    readonly property var buttons: [first, second, third]

    signal taken(int suggestion)
    signal focused(Item control)

    component Suggestion: PushButton {
        required property string name

        visible: name !== ""
        text: name
        spokenName: "Did you mean " + name + "?"
        textSize: Theme.footnote
        implicitHeight: Theme.high(24)
        plain: true
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
        onActiveFocusChanged: if (activeFocus) flow.focused(this)
    }
    Suggestion {
        id: second

        name: flow.names[1] ?? ""
        width: Math.min(implicitWidth, flow.width)
        onClicked: flow.taken(1)
        onActiveFocusChanged: if (activeFocus) flow.focused(this)
    }
    Suggestion {
        id: third

        name: flow.names[2] ?? ""
        width: Math.min(implicitWidth, flow.width)
        onClicked: flow.taken(2)
        onActiveFocusChanged: if (activeFocus) flow.focused(this)
    }
}
