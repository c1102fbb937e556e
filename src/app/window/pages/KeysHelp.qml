pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvalen

/// Lists all keys of the window. F1 opens it; any key or click closes it.
T.Popup {
    id: help

    readonly property list<string> keys: [
        "Ctrl+Return", "Match the playlist",
        "A, L", "In Tidy List: change the line as proposed, or leave it",
        "Up, Down", "Go to the row above or below",
        "Page Up, Page Down, Home, End", "Go further through the rows",
        "A letter", "Go to the next row or entry that begins with it",
        "N, Shift+N", "Go to the next row that is left to do, or back",
        "Ctrl+F", "Find among the rows",
        "Space", "Press or tick the control, or open the list",
        "Alt+Down, F4", "Open the list of candidates",
        "P", "Play or pause the row's file, or the entry of a list",
        "Ctrl+Left, Ctrl+Right", "Seek by 15 seconds",
        "Ctrl+Z", "Undo the last edit, tick or choice",
        "F6, Shift+F6", "Go to the next part of the page, or back",
        "Ctrl+E", "Export the playlist",
        "Ctrl+S", "Save the session",
        "Escape", "Leave a list or field, or close the page",
        "F1", "Show these keys"
    ]

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(520, (parent?.width ?? 600) - 32)
    height: Math.min(implicitContentHeight + padding * 2, (parent?.height ?? 600) - 32)
    padding: 20
    modal: true
    focus: true
    T.Overlay.modal: Rectangle { color: Theme.dim }

    Shortcut {
        sequence: "F1"
        onActivated: help.visible ? help.close() : help.open()
    }

    contentItem: FocusScope {
        focus: true
        implicitHeight: childrenRect.height
        Keys.onPressed: event => {
            event.accepted = true
            help.close()
        }
        Accessible.role: Accessible.Dialog
        Accessible.name: "Keys"

        GridLayout {
            width: parent.width
            columns: 2
            columnSpacing: 16
            rowSpacing: 5

            Label {
                Layout.columnSpan: 2
                Layout.bottomMargin: 6
                text: "Keys"
                font.pixelSize: Theme.headline
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
            }
            Repeater {
                model: help.keys

                Label {
                    required property int index
                    required property string modelData

                    Layout.preferredWidth: 190
                    Layout.fillWidth: index % 2 === 1
                    text: modelData
                    font.pixelSize: Theme.footnote
                    font.weight: index % 2 === 0 ? Font.DemiBold : Font.Normal
                    wrapMode: Text.Wrap
                }
            }
        }
    }
    background: Rectangle {
        radius: Theme.boxRadius
        color: Theme.panel
        border.color: Theme.controlLine
    }
}
