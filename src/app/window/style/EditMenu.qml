import QtQuick
import QtQuick.Templates as T
import Orvalen

/// The context menu of a text area.
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
    implicitWidth: entries.width + padding * 2
    implicitHeight: entries.implicitHeight + padding * 2

    component Entry: Pressable {
        id: entry

        radius: 5
        implicitWidth: caption.implicitWidth + 28
        implicitHeight: Theme.high(28)
        width: parent ? parent.width : implicitWidth
        spokenRole: Accessible.MenuItem

        Label {
            id: caption

            x: 12
            z: 1
            anchors.verticalCenter: parent.verticalCenter
            text: entry.text
            font.pixelSize: Theme.subheadline
            Accessible.ignored: true
        }
    }

    Column {
        id: entries

        width: 140

        Entry {
            text: "Cut"
            enabled: menu.area.selectedText !== "" && !menu.area.readOnly
            onClicked: {
                menu.close()
                menu.area.cut()
            }
        }
        Entry {
            text: "Copy"
            enabled: menu.area.selectedText !== ""
            onClicked: {
                menu.close()
                menu.area.copy()
            }
        }
        Entry {
            text: "Paste"
            focus: true
            enabled: menu.area.canPaste || menu.area.readOnly
            onClicked: {
                menu.close()
                menu.paste()
            }
        }
        Entry {
            text: "Select All"
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
