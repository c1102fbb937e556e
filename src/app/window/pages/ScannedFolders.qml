pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvalen

/// The list of music folders. A long list scrolls.
PanelBox {
    id: box

    required property LibraryState library
    required property int rowsAtOnce

    title: "Scanned Folders"
    symbol: "folder.fill"
    textSize: Theme.subheadline
    padding: 6
    fill: Theme.inset
    contentSpacing: 4

    ListView {
        id: list

        Layout.fillWidth: true
        implicitHeight: Math.min(count, box.rowsAtOnce) * 28 + (count > box.rowsAtOnce ? 12 : 0)
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: box.library.folders
        reuseItems: true
        T.ScrollBar.vertical: ThinScrollBar { id: bar }
        Accessible.role: Accessible.List
        Accessible.name: box.title

        delegate: FolderRow {
            width: list.width - (bar.visible ? 12 : 0)
            onRemoved: path => box.library.removeFolder(path)
        }
    }

    PushButton {
        Layout.topMargin: 0
        text: "Clear All Folders"
        plain: true
        destructive: true
        textSize: Theme.caption
        onClicked: box.library.clearFolders()
    }
}
