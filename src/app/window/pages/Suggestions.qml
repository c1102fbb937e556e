import QtQuick
import Orvalen

/// Tracks of the library that a row without a candidate may mean; three at most.
Flow {
    id: flow

    required property list<string> names
    readonly property var buttons: [first, second, third]

    signal taken(int suggestion)
    signal focused(Item control)

    component Suggestion: PushButton {
        required property int place

        visible: place < flow.names.length
        text: flow.names[place] ?? ""
        spokenName: "Did you mean " + text + "?"
        textSize: Theme.footnote
        implicitHeight: Theme.high(24)
        plain: true
        width: Math.min(implicitWidth, flow.width)
        onClicked: flow.taken(place)
        onActiveFocusChanged: if (activeFocus) flow.focused(this)
    }

    visible: names.length > 0
    spacing: 4

    Label {
        height: 24
        verticalAlignment: Text.AlignVCenter
        text: "Did you mean:"
        font.pixelSize: Theme.caption
        color: Theme.secondary
    }
    Suggestion { id: first; place: 0 }
    Suggestion { id: second; place: 1 }
    Suggestion { id: third; place: 2 }
}
