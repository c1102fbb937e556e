import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvalen

/// The page with the rows and the export, over the main page. The state decides whether it is shown; Escape and "Close"
/// change the state.
T.Dialog {
    id: sheet

    required property ReviewState review
    required property SearchState search
    required property string leftOut
    required property ExportState exports
    required property PreviewState preview

    readonly property int strip: 6 ///< the visible strip of the page below
    readonly property int leastHeight: 800 + strip
    property real risen: 0 ///< 1 when the page is fully open

    title: "Playlist Results"
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    parent: T.Overlay.overlay
    width: parent ? Math.min(900, parent.width) : 600
    height: parent ? parent.height - strip : 800
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: strip + Math.round((1 - risen) * 90)
    opacity: risen

    Connections {
        target: sheet.review
        function onChanged() { sheet.follow() }
    }
    Component.onCompleted: follow()

    /// Moves the focus to the item, or to the list of rows if the item no longer exists.
    function takeFocus(item: Item) {
        const target = item && item !== body && item.visible && item.enabled ? item : results.rowList
        target.forceActiveFocus(Qt.TabFocusReason)
    }

    function follow() {
        if (review.shown)
            open()
        else
            close()
    }

    T.Overlay.modal: Rectangle {
        color: Theme.dim
    }
    enter: Transition {
        NumberAnimation { property: "risen"; to: 1; duration: 300; easing.type: Easing.InOutQuad }
    }
    exit: Transition {
        NumberAnimation { property: "risen"; to: 0; duration: 300; easing.type: Easing.InOutQuad }
    }

    background: Rectangle {
        color: Theme.window
        radius: 12
        border.color: Theme.line

        Rectangle {
            anchors.fill: parent
            anchors.topMargin: 20
            color: parent.color
        }
    }

    ColumnLayout {
        id: body

        anchors.fill: parent
        focus: true
        spacing: 0
        Keys.onEscapePressed: sheet.review.close()
        Keys.onPressed: event => {
            event.accepted = true
            const control = event.modifiers & Qt.ControlModifier
            if (event.matches(StandardKey.Undo)) {
                const row = sheet.review.undo()
                if (row >= 0)
                    results.showRow(row)
            } else if (event.key === Qt.Key_F6) {
                results.goToNextPart((event.modifiers & Qt.ShiftModifier) ? -1 : 1)
            } else if (control && event.key === Qt.Key_F) {
                results.findRow()
            } else if (control && event.key === Qt.Key_E) {
                sheet.exports.exportPlaylist()
            } else if (control && event.key === Qt.Key_S) {
                sheet.exports.saveSession()
            } else if (control && (event.key === Qt.Key_Left || event.key === Qt.Key_Right)) {
                sheet.preview.seekBySeconds(event.key === Qt.Key_Left ? -15 : 15)
            } else if (!control && event.key === Qt.Key_N) {
                results.goToNext(results.lastAsked, (event.modifiers & Qt.ShiftModifier) ? -1 : 1)
            } else {
                event.accepted = false
            }
        }

        ResultsHeader {
            Layout.fillWidth: true
            autoSaving: sheet.review.autoSaving
            onClosed: sheet.review.close()
        }
        Divider { Layout.fillWidth: true }
        ResultsBody {
            id: results

            Layout.fillWidth: true
            Layout.fillHeight: true
            review: sheet.review
            search: sheet.search
            leftOut: sheet.leftOut
            exports: sheet.exports
            preview: sheet.preview
        }
    }

    ExportBanner {
        readonly property real beside: results.bulkButtonsEnd + 16 ///< right of the buttons

        x: Math.max(beside, (sheet.width - width) / 2)
        y: results.y
        width: Math.min(implicitWidth, sheet.width - beside - 16)
        shown: sheet.exports.bannerShown
    }
}
