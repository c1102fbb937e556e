import QtQuick
import QtQuick.Layouts
import Orvalen

/// Shows the position in the previewed track; the slider seeks.
RowLayout {
    id: position

    required property PreviewState preview

    spacing: 12

    SeekSlider {
        id: slider

        Layout.fillWidth: true
        position01: position.preview.progress
        Accessible.name: "Playback position"
        tip: "Ctrl+Left and Ctrl+Right go by 15 seconds"
        spokenPosition: position.preview.position + " of " + position.preview.length
        onDragged: value => position.preview.moveTo(value)
        onReleased: value => position.preview.seekTo(value)
        onStepped: by => position.preview.stepBy(by)
    }
    Binding {
        target: position.preview
        property: "steps"
        value: Math.max(1, Math.round(slider.width * Screen.devicePixelRatio))
    }
    Column {
        Layout.minimumWidth: 38
        spacing: 2

        Label {
            anchors.right: parent.right
            text: position.preview.position
            font.pixelSize: Theme.smallestCaption
            color: Theme.secondary
        }
        Label {
            anchors.right: parent.right
            text: position.preview.length
            font.pixelSize: Theme.smallestCaption
            color: Theme.secondary
        }
    }
}
