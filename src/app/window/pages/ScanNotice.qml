import QtQuick
import QtQuick.Layouts
import Orvalen

/// What the last scan could not read. Offers the library from before the scan if a folder disappeared.
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
        text: "Load the library from before the scan"
        textSize: Theme.caption
        onClicked: notice.library.loadLibraryOfBefore()
    }
}
