pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvalen

/// The texts below the wanted list: how many lines are read, which are left out, and the questions of Tidy List.
ColumnLayout {
    id: box

    required property ListHelpState help
    required property int linesAtOnce ///< the number of left-out lines that are shown before their list scrolls
    readonly property int lineHeight: Theme.high(24)

    spacing: 4

    RowLayout {
        Layout.fillWidth: true
        spacing: 10

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1

            Caption {
                Layout.fillWidth: true
                text: box.help.caption
                elide: Text.ElideRight
            }
            Label {
                Layout.fillWidth: true
                visible: box.help.hint !== ""
                text: box.help.hint
                font.pixelSize: Theme.caption
                color: Theme.accentText
                wrapMode: Text.Wrap
            }
        }
        PushButton {
            id: tidy

            text: "Tidy List"
            // Hidden while a question is shown, because the tip would cover it.
            tip: box.help.readings.length > 0 ? ""
                : "Removes numbers, bullets, emoji and notes, and puts spaces around dashes. Ctrl+Z undoes it."
            textSize: Theme.footnote
            enabled: box.help.canTidy
            onClicked: box.help.tidy()
        }
    }

    TidyQuestion {
        Layout.fillWidth: true
        visible: asks
        help: box.help
        onEnded: tidy.forceActiveFocus(Qt.OtherFocusReason)
    }

    // Keeps the place of the closed disclosure, so that the controls below do not move after a paste.
    Item {
        Layout.fillWidth: true
        implicitHeight: Math.max(Theme.high(26), leftOut.visible ? leftOut.implicitHeight : 0)

        Disclosure {
            id: leftOut

            width: parent.width
            visible: box.help.leftOut.length > 0
            title: "Lines that are left out"
            textSize: Theme.caption

            ListView {
                id: lines

                Layout.fillWidth: true
                implicitHeight: Math.min(contentHeight, box.linesAtOnce * box.lineHeight)
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                model: box.help.leftOut
                T.ScrollBar.vertical: ThinScrollBar {}
                Accessible.role: Accessible.List
                Accessible.name: "Lines that are left out"

                delegate: Pressable {
                    id: entry

                    required property int index
                    required property string modelData

                    text: modelData
                    spokenDetail: box.help.reasons[index] ?? ""
                    width: lines.width - 12
                    implicitHeight: box.lineHeight
                    onClicked: box.help.show(index)
                    onActiveFocusChanged: if (activeFocus) lines.positionViewAtIndex(index, ListView.Contain)

                    contentItem: RowLayout {
                        spacing: 10

                        Label {
                            Layout.fillWidth: true
                            Layout.leftMargin: 6
                            text: entry.text
                            font.pixelSize: Theme.caption
                            elide: Text.ElideRight
                            Accessible.ignored: true
                        }
                        Label {
                            Layout.rightMargin: 6
                            text: entry.spokenDetail
                            font.pixelSize: Theme.smallestCaption
                            color: Theme.secondary
                            Accessible.ignored: true
                        }
                    }
                    background: Rectangle {
                        radius: 5
                        color: entry.stateTint

                        FocusRing { shown: entry.visualFocus }
                    }
                }
            }
        }
    }
}
