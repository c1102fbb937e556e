import QtQuick
import QtQuick.Templates as T
import Orvalen

/// A thin scroll bar, faint until it is used.
T.ScrollBar {
    id: bar

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 2
    minimumSize: 0.08
    visible: policy === T.ScrollBar.AlwaysOn || (policy === T.ScrollBar.AsNeeded && size < 1)
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 8
        implicitHeight: 8
        radius: 4
        color: Theme.ink
        opacity: bar.pressed ? 0.5 : bar.hovered ? 0.4 : bar.active ? 0.32 : 0.2

        Behavior on opacity { NumberAnimation { duration: Theme.quick } }
    }
}
