import QtQuick
import QtQuick.Templates as T
import Orvalen

/// A field for one line of text.
T.TextField {
    id: field

    property int lengthBefore: 0 ///< length of the text before the last edit

    // Removes line breaks and outer spaces, which are often copied along from web pages and mails.
    onTextEdited: {
        const pasted = length - lengthBefore > 1
        const oneLine = text.replace(/[\n\v\f\r\u0085\u2028\u2029]/g, "")
        const kept = pasted ? oneLine.trim() : oneLine
        if (kept !== text) {
            remove(0, length)
            insert(0, kept)
        }
        lengthBefore = length
    }
    onActiveFocusChanged: lengthBefore = length

    implicitWidth: 240
    implicitHeight: Theme.high(32)
    leftPadding: 10
    rightPadding: 10
    horizontalAlignment: TextInput.AlignLeft
    verticalAlignment: TextInput.AlignVCenter
    color: Theme.text
    placeholderTextColor: Theme.secondary
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentInk
    selectByMouse: true
    hoverEnabled: true
    font.family: Theme.family
    font.pixelSize: Theme.body
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText

    Label {
        x: field.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        width: field.width - field.leftPadding - field.rightPadding
        visible: field.length === 0 && field.preeditText === ""
        text: field.placeholderText
        font.pixelSize: field.font.pixelSize
        color: field.placeholderTextColor
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.inset
        border.width: field.activeFocus ? 2 : 1
        border.color: field.activeFocus ? Theme.focus : field.hovered ? Theme.secondary : Theme.controlLine
    }
}
