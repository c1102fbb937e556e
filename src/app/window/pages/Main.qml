import QtQuick
import QtQuick.Window
import Orvalen

/// The one window: the main page, the results page over it, and the alerts over both.
Window {
    id: window

    required property LibraryState library
    required property WantedState wanted
    required property ReviewState review
    required property ExportState exports
    required property PreviewState preview
    required property UpdateState update
    required property Drops drops
    required property LogModel log

    /// The frame of the window's title bar and edges, about.
    readonly property int frame: 48
    readonly property int roomHeight: Math.max(320, Screen.desktopAvailableHeight - frame)
    readonly property int leastHeight: Math.min(roomHeight, review.shown ? results.leastHeight : 690)

    title: "Orvalen"
    color: Theme.window
    minimumWidth: Math.min(600, Screen.desktopAvailableWidth)
    maximumWidth: 900
    minimumHeight: leastHeight
    // 300 points wide is asked for and too narrow for the content: it gets the width at which it looks best.
    width: Math.min(720, Screen.desktopAvailableWidth)
    height: Math.min(800, roomHeight)

    onLeastHeightChanged: if (height < leastHeight) height = leastHeight

    MainPage {
        id: page

        anchors.fill: parent
        visible: results.risen < 1
        library: window.library
        wanted: window.wanted
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
        exports: window.exports
        preview: window.preview
    }

    Alert {
        shown: window.library.asksToDelete
        title: "Are you sure you want to delete the saved library?"
        acceptText: "Delete Library"
        cancelText: "Cancel"
        destructive: true
        onConfirmed: window.library.deleteLibrary()
        onCancelled: window.library.keepLibrary()
    }

    Alert {
        shown: window.update.shown
        title: "Update Available"
        message: window.update.notes
        acceptText: "Download"
        cancelText: "Later"
        onConfirmed: window.update.download()
        onCancelled: window.update.dismiss()
    }
}
