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
                Layout.fillWidth: true
                library: page.library
                // As many as leave the rest of the page visible.
                foldersAtOnce: Math.max(3, Math.floor((page.height - 696) / 28))
            }
            Divider { Layout.fillWidth: true }
            WantedInput {
                Layout.fillWidth: true
                wanted: page.wanted
                listHelp: page.listHelp
            }
            MatchControls {
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
