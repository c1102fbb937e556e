import QtQuick
import QtQuick.Templates as T
import Orvalen

/// The base of all controls that can be pressed: by mouse, Space, Return or assistive technology. ControlAccessible
/// reads the properties `spoken…`.
T.AbstractButton {
    id: control

    property int spokenRole: Accessible.Button
    property string spokenName: text
    property string spokenDetail
    property string tip ///< text of the tool tip
    /// Whether the control is checked or selected. For roles with these states.
    property bool ticked: false
    property int radius: Theme.radius ///< radius of the corners of the tint
    readonly property color stateTint: Qt.rgba(Theme.ink.r, Theme.ink.g, Theme.ink.b, down ? 0.14 : hovered ? 0.07 : 0)

    opacity: enabled ? 1 : Theme.disabledOpacity
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Accessible.role: spokenRole
    Accessible.name: spokenName
    Accessible.description: spokenDetail
    Accessible.checked: ticked

    onPressedChanged: tips.dismissed = true // the tip would cover what the press opens

    TipLoader {
        id: tips

        anchors.fill: parent
        tip: control.tip
        hovered: control.hovered
    }

    background: Rectangle {
        radius: control.radius
        color: control.stateTint

        FocusRing {
            inner: control.radius
            shown: control.visualFocus
        }
    }
}
