pragma ComponentBehavior: Bound

import QtQuick
import Orvalen

/// Turns while an operation of unknown length runs.
Item {
    id: spinner

    implicitWidth: 18
    implicitHeight: 18
    Accessible.role: Accessible.Animation
    Accessible.name: "Working"

    Repeater {
        model: 8

        Rectangle {
            required property int index

            x: spinner.width / 2 - width / 2 + Math.sin(index * Math.PI / 4) * spinner.width * 0.36
            y: spinner.height / 2 - height / 2 - Math.cos(index * Math.PI / 4) * spinner.height * 0.36
            width: spinner.width * 0.17
            height: width
            radius: width / 2
            color: Theme.accentText
            opacity: 0.2 + 0.1 * index
        }
    }
    RotationAnimator on rotation {
        running: spinner.visible
        from: 0
        to: 360
        duration: 1000
        loops: Animation.Infinite
    }
}
