import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvalen

/// A question in the middle of the window. `shown` decides whether it is shown; buttons and Escape only emit signals.
T.Dialog {
    id: alert

    required property bool shown
    property string message
    required property string acceptText
    required property string cancelText
    property bool destructive: false
    signal confirmed()
    signal cancelled()

    onShownChanged: shown ? open() : close()
    Component.onCompleted: if (shown) open()

    onOpened: {
        // Keeps the focus if the user has already pressed Tab.
        if (cancel.activeFocus || !alert.activeFocus)
            takeFocus()
    }

    /// Focuses "Cancel": if the user is typing when the alert opens, a key can only cancel.
    function takeFocus() {
        cancel.forceActiveFocus(Qt.TabFocusReason)
    }

    z: 1 // above the results page, whichever opened first

    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    parent: T.Overlay.overlay
    width: parent ? Math.min(380, parent.width - 48) : 380
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 3) : 0
    height: Math.min(implicitHeight, parent ? parent.height - 40 : implicitHeight)
    implicitHeight: content.implicitHeight + topPadding + bottomPadding
    padding: 20

    T.Overlay.modal: Rectangle {
        color: Theme.dim
        Behavior on opacity { NumberAnimation { duration: Theme.quick } }
    }

    ColumnLayout {
        id: content

        anchors.fill: parent
        spacing: 10
        Keys.onEscapePressed: alert.cancelled()

        Label {
            Layout.fillWidth: true
            text: alert.title
            font.pixelSize: Theme.headline
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        Flickable {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: alert.message !== ""
            implicitHeight: Math.min(contentHeight, 320)
            contentHeight: words.implicitHeight
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: ThinScrollBar {}

            Label {
                id: words

                width: parent.width
                text: alert.message
                font.pixelSize: Theme.subheadline
                color: Theme.secondary
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.topMargin: 6
            spacing: 10

            PushButton {
                id: cancel

                Layout.fillWidth: true
                Layout.preferredWidth: 1
                focus: true
                text: alert.cancelText
                onClicked: alert.cancelled()
            }
            PushButton {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: alert.acceptText
                prominent: !alert.destructive
                destructive: alert.destructive
                onClicked: alert.confirmed()
            }
        }
    }
    background: Rectangle {
        radius: 14
        color: Theme.panel
        border.color: Theme.controlLine
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.quick }
    }
}
