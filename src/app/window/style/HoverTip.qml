import QtQuick
import QtQuick.Templates as T
import Orvalen

/// The text that appears when the pointer rests on a control.
T.ToolTip {
    id: tip

    property bool shown: false

    visible: shown
    delay: 500
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height + 6 : 0
    margins: 8
    padding: 7
    leftPadding: 10
    rightPadding: 10
    implicitWidth: Math.min(320, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    closePolicy: T.Popup.NoAutoClose

    contentItem: Label {
        text: tip.text
        font.pixelSize: Theme.footnote
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        radius: 6
        color: Theme.control
        border.color: Theme.controlLine
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick }
    }
}
