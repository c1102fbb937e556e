import QtQuick
import QtQuick.Templates as T
import Orvalen

/// What can be done with marked text, by mouse.
T.Popup {
    id: menu

    required property T.TextArea area
    signal paste()

    function openAt(x: real, y: real) {
        menu.x = x
        menu.y = y
        open()
    }

    modal: true
    focus: true
    margins: 8
    padding: 5
    T.Overlay.modal: Item {}
    implicitWidth: entries.implicitWidth + padding * 2
    implicitHeight: entries.implicitHeight + padding * 2

    Column {
        id: entries

        readonly property int widest: Math.max(cut.implicitWidth, all.implicitWidth)

        PushButton {
            id: cut

            width: entries.widest
            text: "Cut"
            plain: true
            textSize: Theme.subheadline
            spokenRole: Accessible.MenuItem
            enabled: menu.area.selectedText !== ""
            onClicked: {
                menu.close()
                menu.area.cut()
            }
        }
        PushButton {
            width: entries.widest
            text: "Copy"
            plain: true
            textSize: Theme.subheadline
            spokenRole: Accessible.MenuItem
            enabled: menu.area.selectedText !== ""
            onClicked: {
                menu.close()
                menu.area.copy()
            }
        }
        PushButton {
            width: entries.widest
            text: "Paste"
            plain: true
            focus: true
            textSize: Theme.subheadline
            spokenRole: Accessible.MenuItem
            enabled: menu.area.canPaste
            onClicked: {
                menu.close()
                menu.paste()
            }
        }
        PushButton {
            id: all

            width: entries.widest
            text: "Select All"
            plain: true
            textSize: Theme.subheadline
            spokenRole: Accessible.MenuItem
            onClicked: {
                menu.close()
                menu.area.selectAll()
            }
        }
    }
    background: Rectangle {
        radius: Theme.boxRadius
        color: Theme.panel
        border.color: Theme.controlLine
    }
}
