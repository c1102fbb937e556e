import QtQuick
import QtQuick.Layouts
import Orvalen

/// Music folders, sessions, the scan and library files.
ColumnLayout {
    id: controls

    required property LibraryState library
    /// The number of folders that are shown before their list scrolls.
    required property int foldersAtOnce

    spacing: 8

    Flow {
        Layout.fillWidth: true
        spacing: 8
        enabled: !controls.library.scanning

        PushButton {
            text: "Add Music Folder(s)"
            symbol: "folder.badge.plus"
            prominent: true
            onClicked: controls.library.addFolders()
        }
        PushButton {
            text: "Load Session"
            symbol: "doc"
            onClicked: controls.library.loadSession()
        }
        PushButton {
            text: "Load Last Session"
            symbol: "clock.arrow.circlepath"
            onClicked: controls.library.loadLastSession()
        }
    }

    ScannedFolders {
        Layout.fillWidth: true
        visible: controls.library.hasFolders
        library: controls.library
        rowsAtOnce: controls.foldersAtOnce
    }

    Flow {
        Layout.fillWidth: true
        spacing: 8

        PushButton {
            text: controls.library.scanButtonText
            symbol: "arrow.triangle.2.circlepath"
            prominent: true
            enabled: controls.library.canScan
            onClicked: controls.library.scan()
        }
        PushButton {
            text: "Backup Scanned Library"
            onClicked: controls.library.backUp()
        }
        PushButton {
            text: "Load Scanned Library"
            onClicked: controls.library.loadLibrary()
        }
    }

    PushButton {
        Layout.leftMargin: -6
        text: "Remove Saved Library"
        plain: true
        destructive: true
        textSize: Theme.caption
        onClicked: controls.library.askToDelete()
    }

    Item {
        Layout.fillWidth: true
        implicitHeight: scan.implicitHeight // reserved, so that a scan moves nothing below

        Column {
            id: scan

            width: parent.width
            visible: controls.library.scanBarVisible
            spacing: 4

            LinearProgress {
                width: parent.width
                label: "Scanning…"
                value: controls.library.scanProgress
                thickness: 12
            }
            Caption {
                width: parent.width
                text: controls.library.scanFileName
                elide: Text.ElideMiddle
            }
        }
    }

    Label {
        Layout.fillWidth: true
        text: controls.library.indexedText
        font.pixelSize: Theme.headline
        font.weight: Font.DemiBold
        elide: Text.ElideRight
    }
    ScanNotice {
        Layout.fillWidth: true
        library: controls.library
    }
}
