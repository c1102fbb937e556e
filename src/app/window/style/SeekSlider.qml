import QtQuick
import QtQuick.Templates as T
import Orvalen

/// A slider for a position from 0 to 1. Shows `position01`, except while it is dragged.
T.Slider {
    id: slider

    required property real position01
    /// The position as text for screen readers.
    property string spokenPosition
    property string tip ///< text of the tool tip
    /// Emitted while dragging.
    signal dragged(real value)
    /// Emitted when the user releases the slider or a screen reader sets it.
    signal released(real value)
    /// Emitted when a key or a screen reader moves the slider. `by` is a share of the range, negative for backwards.
    signal stepped(real by)
    // The range for screen readers.
    readonly property real minimumValue: from
    readonly property real maximumValue: to

    implicitWidth: 200
    implicitHeight: 28
    padding: 0
    from: 0
    to: 1
    stepSize: 0.02
    snapMode: T.Slider.NoSnap
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    onMoved: dragged(value)
    onPressedChanged: if (!pressed) released(value)
    // A screen reader sets the value without pressing.
    onValueChanged: if (!pressed && Math.abs(value - position01) > 1e-9) released(value)

    Accessible.role: Accessible.Slider
    Accessible.description: spokenPosition
    Accessible.onIncreaseAction: stepped(stepSize)
    Accessible.onDecreaseAction: stepped(-stepSize)

    // Does not change `value`: steps start at the player's position, but the slider shows 0 while paused.
    Keys.onRightPressed: stepped(stepSize)
    Keys.onUpPressed: stepped(stepSize)
    Keys.onLeftPressed: stepped(-stepSize)
    Keys.onDownPressed: stepped(-stepSize)
    Keys.onPressed: event => {
        const by = {[Qt.Key_PageUp]: 0.1, [Qt.Key_PageDown]: -0.1, [Qt.Key_Home]: -1, [Qt.Key_End]: 1}[event.key]
        event.accepted = by !== undefined
        if (event.accepted)
            stepped(by)
    }

    Binding {
        target: slider
        property: "value"
        value: slider.position01
        when: !slider.pressed
        restoreMode: Binding.RestoreNone
    }

    TipLoader {
        anchors.fill: parent
        tip: slider.tip
        hovered: slider.hovered && !slider.pressed
    }

    background: Rectangle {
        x: slider.leftPadding + 7
        y: slider.topPadding + (slider.availableHeight - height) / 2
        width: slider.availableWidth - 14
        height: 5
        radius: 2.5
        color: Theme.track

        Rectangle {
            width: slider.visualPosition * parent.width
            height: parent.height
            radius: parent.radius
            color: Theme.accent
        }
    }
    handle: Rectangle {
        x: slider.leftPadding + slider.visualPosition * (slider.availableWidth - width)
        y: slider.topPadding + (slider.availableHeight - height) / 2
        width: 16
        height: 16
        radius: 8
        color: slider.pressed ? Theme.accentPressed : slider.hovered ? Theme.accentHovered : Theme.accent
        border.width: 2
        border.color: Theme.dark ? Theme.window : "#ffffff"

        FocusRing {
            inner: 8
            shown: slider.visualFocus
        }
    }
}
