import QtQuick
import QtQuick.Layouts
import Orvalen

/// One music folder with the number of its tracks and a button to remove it.
RowLayout {
    id: row

    required property int index
    required property string path
    required property string shownPath
    required property string countText
    required property bool notConnected ///< its drive is not connected
    signal removed(path: string)

    height: Theme.high(28)
    spacing: 8
    Accessible.role: Accessible.ListItem
    Accessible.name: path
    Accessible.description: notConnected ? hint.text : ""

    Symbol {
        Layout.leftMargin: 6
        name: "externaldrive"
        color: Theme.secondary
    }
    Label {
        Layout.fillWidth: true
        text: row.shownPath
        font.pixelSize: Theme.caption
        elide: Text.ElideMiddle
    }
    Label {
        id: hint

        visible: row.notConnected
        text: "not connected: the next refresh removes its tracks"
        font.pixelSize: Theme.smallestCaption
        font.italic: true
        color: Theme.secondary
    }
    Label {
        visible: row.countText !== ""
        text: row.countText
        font.pixelSize: Theme.smallestCaption
        color: Theme.secondary
    }
    SymbolButton {
        text: "Remove " + row.path
        symbol: "minus.circle"
        color: Theme.danger
        onClicked: row.removed(row.path)
        onActiveFocusChanged: if (activeFocus) row.ListView.view?.positionViewAtIndex(row.index, ListView.Contain)
    }
}
