#include "app/window/bridge/LibraryState.h"

#include "app/window/bridge/QtText.h"
#include "library/FolderScan.h"
#include "session/SessionFiles.h"

namespace orvalen {

LibraryState::LibraryState(ContentView& view, ChangeNotifier& notifier)
    : StateProperties(view, notifier), folders_(view) {
    follow(view.musicFolderURLs, view.trackDict, view.trackCount, view.scanProgress, view.scanningFileName,
           view.lastScan, view.showDeleteLibraryConfirmation);
}

void LibraryState::refresh() {
    folders_.refresh();
    emit changed();
}

QString LibraryState::scanButtonText() const {
    return view().trackDict.get().empty() ? "Scan Library" : "Refresh Library";
}

QString LibraryState::unreadableText() const {
    const ScanOutcome& scan = view().lastScan.get();
    QString text;
    if (scan.unreadableFiles > 0)
        text = QString::number(scan.unreadableFiles) + (scan.unreadableFiles == 1 ? " file" : " files") +
               " could not be read in the last scan";
    for (const std::string& folder : scan.vanishedFolders)
        text += (text.isEmpty() ? "" : "; ") + toQString(folder) + " was not found by the last scan";
    return text;
}

void LibraryState::addFolders() {
    later([this](ContentView& state) {
        if (!scanning())
            addMusicLocations(state);
    });
}

void LibraryState::removeFolder(const QString& path) {
    later([location = Location{toUtf8(path)}](ContentView& state) { removeMusicLocation(state, location); });
}

void LibraryState::scan() {
    later([this](ContentView& state) {
        if (canScan())
            scanLibrary(state);
    });
}

void LibraryState::loadSession() {
    later([this](ContentView& state) {
        if (!scanning())
            orvalen::loadSession(state);
    });
}

void LibraryState::loadLastSession() {
    later([this](ContentView& state) {
        if (!scanning())
            orvalen::loadLastSession(state);
    });
}

} // namespace orvalen
