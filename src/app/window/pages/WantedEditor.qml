import QtQuick
import QtQuick.Templates as T
import Orvalen

/// The editor of the wanted text. WantedState moves text between the editor and the state.
Rectangle {
    id: editor

    required property WantedState wanted
    readonly property alias textDocument: area.textDocument

    implicitHeight: 120
    color: Theme.inset
    border.width: area.activeFocus ? 2 : 1
    border.color: area.activeFocus ? Theme.focus : Theme.controlLine
    radius: 4
    Component.onCompleted: wanted.edit(area.textDocument, area)

    Connections {
        target: editor.wanted
        function onTextReplaced() { area.cursorPosition = 0 }
    }

    /// Selects a part of the text and scrolls to it.
    function show(position: int, length: int) {
        area.select(position + length, position)
        view.contentY = Math.max(0, Math.min(area.cursorRectangle.y - 40, view.contentHeight - view.height))
    }

    function paste() { wanted.paste(area.selectionStart, area.selectionEnd, false) }

    Flickable {
        id: view

        anchors.fill: parent
        anchors.margins: 2
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ThinScrollBar {}

        T.TextArea.flickable: T.TextArea {
            id: area

            readonly property string spokenEditorName: "Wanted list"

            padding: 6
            rightPadding: 14
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            horizontalAlignment: TextEdit.AlignLeft
            readOnly: editor.wanted.tooLongToShow
            color: Theme.text
            selectionColor: Theme.accent
            selectedTextColor: Theme.accentInk
            selectByMouse: true
            persistentSelection: true
            font.family: Theme.family
            font.pixelSize: Theme.subheadline
            // Without kerning and ligatures, a list of 100,000 lines is laid out three times as fast.
            font.kerning: false
            font.preferShaping: false
            Keys.onPressed: event => {
                if (event.matches(StandardKey.Paste)) {
                    editor.paste()
                    event.accepted = true
                }
            }
            Accessible.role: Accessible.EditableText
            Accessible.name: spokenEditorName
            // Tab moves the focus; the list needs no tabs.
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        }
    }

    MouseArea {
        anchors.fill: view
        acceptedButtons: Qt.RightButton | Qt.MiddleButton
        cursorShape: Qt.IBeamCursor
        onClicked: mouse => {
            area.forceActiveFocus(Qt.MouseFocusReason)
            if (mouse.button === Qt.RightButton) {
                menu.openAt(mouse.x, mouse.y)
            } else {
                const place = mapToItem(area, mouse.x, mouse.y)
                const position = area.positionAt(place.x, place.y)
                editor.wanted.paste(position, position, true)
            }
        }

        EditMenu {
            id: menu

            area: area
            onPaste: editor.paste()
        }
    }

    Column {
        x: 8
        y: 8
        width: parent.width - 16
        visible: editor.wanted.tooLongToShow
        spacing: 8

        Label {
            width: parent.width
            text: "This list is too long to show. It is matched and saved whole."
            font.pixelSize: Theme.subheadline
            color: Theme.secondary
            wrapMode: Text.Wrap
        }
        PushButton {
            text: "Clear List"
            textSize: Theme.footnote
            onClicked: {
                editor.wanted.clearList()
                area.forceActiveFocus(Qt.OtherFocusReason)
            }
        }
    }
}
