import QtQuick
import Orvalen

/// The previewed track and the position in it.
Rectangle {
    id: panel

    required property PreviewState preview

    implicitHeight: stack.implicitHeight + 20
    radius: 8
    color: Theme.mix(Theme.window, Theme.accent, 0.1)
    Accessible.role: Accessible.Grouping
    Accessible.name: "Now Playing"

    Column {
        id: stack

        x: 12
        y: 10
        width: parent.width - 24
        spacing: 8

        Label {
            width: parent.width
            text: panel.preview.title
            font.pixelSize: Theme.subheadline
            color: Theme.secondary
            elide: Text.ElideMiddle
            maximumLineCount: 1
        }
        AudioPreviewView {
            width: parent.width
            preview: panel.preview
        }
    }
}
