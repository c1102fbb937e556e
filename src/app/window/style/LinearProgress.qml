import QtQuick
import Orvalen

/// A progress bar from 0 to 1 with its name above.
Column {
    id: progress

    required property string label
    required property real value
    property int thickness: 6

    spacing: 5
    readonly property bool spokenProgress: true // read by ProgressAccessible
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label

    Label {
        text: progress.label
        font.pixelSize: Theme.subheadline
        Accessible.ignored: true
    }
    Rectangle {
        width: progress.width
        height: progress.thickness
        radius: height / 2
        color: Theme.track

        Rectangle {
            width: Math.max(height, parent.width * Math.max(0, Math.min(1, progress.value)))
            height: parent.height
            radius: height / 2
            color: Theme.accent
        }
    }
}
