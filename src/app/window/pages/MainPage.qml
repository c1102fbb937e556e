import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvalen

/// The page for the library and the wanted list. Scrolls if the window is too low.
Flickable {
    id: page

    required property LibraryState library
    required property WantedState wanted
    required property ListHelpState listHelp
    required property UpdateState update
    required property LogModel log
    signal logAsked()

    contentWidth: width
    contentHeight: Math.max(height, stack.implicitHeight + stack.anchors.topMargin + 8)
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: ThinScrollBar {}

    /// Scrolls so that the focused control is visible.
    function reveal(item: Item) {
        if (!item || !stack.contains(stack.mapFromItem(item, 0, 0)))
            return
        const top = item.mapToItem(contentItem, 0, 0).y
        if (top - 12 < contentY)
            contentY = Math.max(0, top - 12)
        else if (top + item.height + 12 > contentY + height)
            contentY = Math.min(contentHeight - height, top + item.height + 12 - height)
    }

    /// Moves the focus to the next part of the page: library, list, match controls.
    function goToNextPart(by: int) {
        const parts = [libraryControls, wantedInput, matchControls]
        let at = -1
        for (let i = 0; i < parts.length; ++i)
            if (parts[i].contains(parts[i].mapFromItem(Window.activeFocusItem, 0, 0)))
                at = i
        const next = parts[(at < 0 ? 0 : at + by + 3) % 3]
        next.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    }

    Shortcut {
        sequence: "F6"
        enabled: page.wanted.onTop
        onActivated: page.goToNextPart(1)
    }
    Shortcut {
        sequence: "Shift+F6"
        enabled: page.wanted.onTop
        onActivated: page.goToNextPart(-1)
    }

    Connections {
        target: page.Window.window
        function onActiveFocusItemChanged() { page.reveal(page.Window.activeFocusItem) }
    }

    ColumnLayout {
        id: stack

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.top
        anchors.topMargin: 8
        width: Math.min(900, page.width) - 32
        height: page.contentHeight - anchors.topMargin - 8
        spacing: 8

        Label {
            Layout.fillWidth: true
            text: "Orvalen"
            font.pixelSize: Theme.title
            font.weight: Font.Bold
            color: Theme.accentText
            horizontalAlignment: Text.AlignHCenter
            Accessible.role: Accessible.Heading
        }

        PanelBox {
            Layout.fillWidth: true
            title: "Library Controls"
            symbol: "folder"

            LibraryControls {
                id: libraryControls

                Layout.fillWidth: true
                library: page.library
                // As many folders as fit while the rest of the page is visible.
                foldersAtOnce: Math.max(3, Math.floor((page.height - 696) / 28))
            }
            Divider { Layout.fillWidth: true }
            WantedInput {
                id: wantedInput

                Layout.fillWidth: true
                wanted: page.wanted
                listHelp: page.listHelp
                // As many lines as fit while "Match Playlist" is visible.
                linesAtOnce: Math.max(2, Math.min(5, Math.floor((page.height - 720) / 24)))
            }
            MatchControls {
                id: matchControls

                Layout.fillWidth: true
                wanted: page.wanted
            }
        }

        Item { Layout.fillHeight: true }

        Item {
            Layout.fillWidth: true
            implicitHeight: logButton.height

            Label {
                anchors.horizontalCenter: parent.horizontalCenter
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, parent.width - 2 * (logButton.width + 8))
                text: page.update.footer
                font.pixelSize: Theme.footnote
                color: Theme.secondary
                elide: Text.ElideMiddle
            }
            PushButton {
                id: logButton

                anchors.right: parent.right
                text: page.log.unseen > 0 ? "Log (" + page.log.unseen + ")" : "Log"
                plain: true
                textSize: Theme.footnote
                onClicked: page.logAsked()
            }
        }
    }
}
