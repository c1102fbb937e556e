import QtQuick
import QtQuick.Templates as T
import Orvalen

/// Many lines of plain text that scroll in a box.
Rectangle {
    id: editor

    property alias document: area.textDocument
    property string name
    property string placeholder

    function replaceText(text: string) {
        area.text = text
        area.cursorPosition = 0
    }

    color: Theme.inset
    border.width: area.activeFocus ? 2 : 1
    border.color: area.activeFocus ? Theme.focus : Theme.controlLine
    radius: 4

    Flickable {
        id: view

        anchors.fill: parent
        anchors.margins: 2
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ThinScrollBar {}

        T.TextArea.flickable: T.TextArea {
            id: area

            padding: 6
            rightPadding: 14
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            color: Theme.text
            selectionColor: Theme.accent
            selectedTextColor: Theme.accentInk
            selectByMouse: true
            persistentSelection: true
            font.family: Theme.family
            font.pixelSize: Theme.subheadline
            // Tab goes on to the next control; a list of songs needs no tabs.
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            Accessible.role: Accessible.EditableText
            Accessible.name: editor.name
            Accessible.multiLine: true

            Label {
                x: area.leftPadding
                y: area.topPadding
                visible: area.length === 0 && area.preeditText === ""
                text: editor.placeholder
                font.pixelSize: area.font.pixelSize
                color: Theme.secondary
                Accessible.ignored: true
            }
        }
    }
}
