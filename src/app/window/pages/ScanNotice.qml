import QtQuick
import QtQuick.Layouts
import Orvalen

/// What the last scan could not read, and the way back to the library of before when a folder vanished during it.
ColumnLayout {
    id: notice

    required property LibraryState library

    visible: library.unreadableText !== ""
    spacing: 4

    Caption {
        Layout.fillWidth: true
        text: notice.library.unreadableText
        elide: Text.ElideMiddle
    }
    PushButton {
        visible: notice.library.folderVanished
        text: "Load the library of before"
        textSize: Theme.caption
        onClicked: notice.library.loadLibraryOfBefore()
    }
}
