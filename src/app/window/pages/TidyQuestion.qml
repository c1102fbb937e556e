pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Orvalen

/// One line that can be read in another way. A accepts the first reading, L leaves the line as it is.
Rectangle {
    id: panel

    required property ListHelpState help
    readonly property bool asks: help.readings.length > 0

    /// Emitted when the last question was answered.
    signal ended()

    implicitHeight: column.implicitHeight + 16
    radius: Theme.radius
    color: Theme.inset
    border.color: Theme.line
    Accessible.role: Accessible.Grouping
    Accessible.name: "Line to decide: " + panel.help.question

    onAsksChanged: focusTimer.restart()

    Timer { id: focusTimer; interval: 0; onTriggered: panel.moveFocus() }

    function moveFocus() {
        if (asks)
            leave.forceActiveFocus(Qt.OtherFocusReason)
        else
            ended()
    }

    Keys.onPressed: event => {
        event.accepted = true
        if (event.key === Qt.Key_A)
            panel.help.accept(0)
        else if (event.key === Qt.Key_L)
            panel.help.leave()
        else if (event.key === Qt.Key_Escape)
            panel.help.leaveAll()
        else
            event.accepted = false
    }

    ColumnLayout {
        id: column

        x: 10
        y: 8
        width: parent.width - 20
        spacing: 6

        RowLayout {
            Layout.fillWidth: true
            spacing: 10

            Label {
                Layout.fillWidth: true
                text: panel.help.question
                font.pixelSize: Theme.subheadline
                elide: Text.ElideMiddle
            }
            Caption {
                text: panel.help.questionCount
            }
        }
        Flow {
            Layout.fillWidth: true
            spacing: 8

            Repeater {
                model: panel.help.readings

                delegate: PushButton {
                    required property int index
                    required property string modelData

                    text: modelData
                    spokenName: "Change to " + modelData
                    textSize: Theme.footnote
                    width: Math.min(implicitWidth, column.width)
                    tip: index === 0 ? "Changes the line (A)" : "Changes the line"
                    onClicked: {
                        focusTimer.restart() // the next question replaces this button
                        panel.help.accept(index)
                    }
                }
            }
            PushButton {
                id: leave

                text: "Leave"
                textSize: Theme.footnote
                plain: true
                tip: "Leaves the line as it is (L)"
                onClicked: panel.help.leave()
            }
            PushButton {
                text: "Leave All"
                textSize: Theme.footnote
                plain: true
                tip: "Leaves this line and all further ones (Escape)"
                onClicked: panel.help.leaveAll()
            }
        }
    }
}
