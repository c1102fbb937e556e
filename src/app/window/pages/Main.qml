import QtQuick
import QtQuick.Window
import Orvalen

/// The window: the main page, the results page over it, and alerts over both.
Window {
    id: window

    required property LibraryState library
    required property WantedState wanted
    required property ListHelpState listHelp
    required property ReviewState review
    required property SearchState search
    required property ExportState exports
    required property PreviewState preview
    required property UpdateState update
    required property Drops drops
    required property LogModel log

    /// On Wayland, the compositor sets the size of a maximised window and disconnects a program that draws another
    /// size.
    readonly property bool onWayland: Qt.platform.pluginName.startsWith("wayland")
    readonly property int greatestWidth: 900
    /// Height of the title bar and edges. On Wayland, more is reserved, because it does not report the space of panels.
    readonly property int frame: onWayland ? 80 : 48
    readonly property int roomHeight: Math.max(320, Screen.desktopAvailableHeight - frame)
    readonly property int leastHeight: Math.min(roomHeight, review.shown ? results.leastHeight : 690)

    title: "Orvalen"
    color: Theme.window
    minimumWidth: Math.min(600, Screen.desktopAvailableWidth)
    maximumWidth: onWayland ? 16777215 : greatestWidth
    minimumHeight: leastHeight
    // The width at which the controls of the main page fit best.
    width: Math.min(720, Screen.desktopAvailableWidth)
    height: Math.min(800, roomHeight)

    onWidthChanged: limitWidth()
    onVisibilityChanged: limitWidth()
    onLeastHeightChanged: fitHeight()
    onActiveFocusItemChanged: rememberFocus()

    function limitWidth() {
        if (visibility === Window.Windowed && width > greatestWidth)
            width = greatestWidth
    }

    property int heightBefore: 0 ///< height before the results page made the window higher; 0 if it did not
    property int heightMade: 0

    /// Makes the window higher for the results page, and restores the height afterwards unless the user has resized the
    /// window.
    function fitHeight() {
        if (visibility !== Window.Windowed)
            return
        if (height < leastHeight) {
            heightBefore = height
            height = heightMade = leastHeight
        } else if (!review.shown && heightBefore > 0) {
            if (height === heightMade)
                height = heightBefore
            heightBefore = 0
        }
    }

    property Item focusedOnPage
    property Item focusedOnResults

    function rememberFocus() {
        const item = activeFocusItem
        if (contains(page, item))
            focusedOnPage = item
        else if (contains(results.contentItem, item))
            focusedOnResults = item
    }

    function contains(root: Item, item: Item): bool {
        for (let it = item; it; it = it.parent)
            if (it === root)
                return true
        return false
    }

    /// Moves the focus into the topmost page or alert. On a page, the control that had the focus there before gets it.
    function restoreFocus() {
        if (updateAlert.shown)
            updateAlert.takeFocus()
        else if (deletion.shown)
            deletion.takeFocus()
        else if (review.shown)
            results.takeFocus(focusedOnResults)
        else if (focusedOnPage && focusedOnPage.visible && focusedOnPage.enabled)
            focusedOnPage.forceActiveFocus(Qt.TabFocusReason)
    }

    MainPage {
        id: page

        anchors.fill: parent
        visible: results.risen < 1
        library: window.library
        wanted: window.wanted
        listHelp: window.listHelp
        update: window.update
        log: window.log
        onLogAsked: logPage.open()
    }

    LogPage {
        id: logPage

        log: window.log
    }

    DropOverlay {
        anchors.fill: parent
        drops: window.drops
    }

    ResultsPage {
        id: results

        review: window.review
        search: window.search
        leftOut: window.listHelp.leftOutOfRun
        exports: window.exports
        preview: window.preview
        onOpened: {
            window.focusedOnResults = null
            window.restoreFocus()
        }
        onClosed: window.restoreFocus()
    }

    KeysHelp {}

    Alert {
        id: deletion

        shown: window.library.asksToDelete
        title: "Are you sure you want to delete the saved library?"
        acceptText: "Delete Library"
        cancelText: "Cancel"
        destructive: true
        onConfirmed: window.library.deleteLibrary()
        onCancelled: window.library.keepLibrary()
        onClosed: window.restoreFocus()
    }

    Alert {
        id: updateAlert

        shown: window.update.shown
        title: "Update Available"
        message: window.update.notes
        acceptText: "Download"
        cancelText: "Later"
        onConfirmed: window.update.download()
        onCancelled: window.update.dismiss()
        onClosed: window.restoreFocus()
    }
}
