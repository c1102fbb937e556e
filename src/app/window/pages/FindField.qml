import QtQuick
import Orvalen

/// Finds rows by a part of their label. Return finds the next, Shift+Return the previous, Escape closes the field.
InputField {
    id: field

    required property ReviewState review
    property int found: -1

    /// Emitted with the found row, or -1.
    signal shown(int row)
    signal leaving()

    function start() {
        visible = true
        found = -1
        selectAll()
        forceActiveFocus(Qt.ShortcutFocusReason)
    }

    function find(from: int, by: int) {
        found = review.find(text, from, by)
        if (found >= 0)
            shown(found)
    }

    visible: false
    implicitWidth: 180
    implicitHeight: 28
    font.pixelSize: Theme.footnote
    placeholderText: "Find in results"
    color: text !== "" && found < 0 ? Theme.danger : Theme.text
    onTextChanged: if (activeFocus) find(Math.max(0, found), 1)
    TipLoader {
        anchors.fill: parent
        tip: "Return goes to the next row, Shift+Return to the one before, Escape leaves"
        hovered: field.hovered
    }
    Keys.onPressed: event => {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Return:
        case Qt.Key_Enter:
            return (event.modifiers & Qt.ShiftModifier) ? find(found - 1, -1) : find(found + 1, 1)
        case Qt.Key_Escape:
            visible = false
            return leaving()
        }
        event.accepted = false
    }
}
