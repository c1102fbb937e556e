import QtQuick
import QtQuick.Templates as T
import Orvalen

/// A position from 0 to 1. Shows what it is told except while it is dragged.
T.Slider {
    id: slider

    required property real position01
    /// The position as a screen reader says it.
    property string spokenPosition
    /// While dragging.
    signal dragged(real value)
    /// Let go, or set from outside.
    signal released(real value)
    /// By a key or by a screen reader's step: a share of the whole, forwards or back.
    signal stepped(real by)
    // What a screen reader is told of the range.
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
    // A screen reader writes the value without pressing.
    onValueChanged: if (!pressed && Math.abs(value - position01) > 1e-9) released(value)

    Accessible.role: Accessible.Slider
    Accessible.description: spokenPosition
    Accessible.onIncreaseAction: stepped(stepSize)
    Accessible.onDecreaseAction: stepped(-stepSize)

    // From where the player is: the slider itself stands at the start while it is paused.
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
