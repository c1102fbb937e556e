#include "app/window/bridge/LibraryState.h"

#include "app/window/bridge/QtText.h"
#include "library/FolderScan.h"
#include "library/LibraryFile.h"
#include "library/MusicFolders.h"
#include "session/SessionFiles.h"

namespace orvalen {

LibraryState::LibraryState(ContentView& view, ChangeNotifier& notifier)
    : StateProperties(view, notifier), folders_(view) {
    follow(view.musicFolderURLs);
    follow(view.trackDict);
    follow(view.trackCount);
    follow(view.scanProgress);
    follow(view.scanningFileName);
    follow(view.showDeleteLibraryConfirmation);
}

void LibraryState::refresh() {
    folders_.refresh();
    emit changed();
}

bool LibraryState::hasFolders() const {
    return !view().musicFolderURLs.get().empty();
}

bool LibraryState::scanning() const {
    return scanProgress() > 0;
}

bool LibraryState::scanBarVisible() const {
    return scanProgress() > 0 && scanProgress() < 1;
}

double LibraryState::scanProgress() const {
    return view().scanProgress.get();
}

QString LibraryState::scanFileName() const {
    return toQString(view().scanningFileName.get());
}

QString LibraryState::scanButtonText() const {
    return view().trackDict.get().empty() ? "Scan Library" : "Refresh Library";
}

bool LibraryState::canScan() const {
    return hasFolders() && !scanning();
}

QString LibraryState::indexedText() const {
    return "Tracks Indexed: " + QString::number(view().trackCount.get());
}

bool LibraryState::asksToDelete() const {
    return view().showDeleteLibraryConfirmation.get();
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

void LibraryState::clearFolders() {
    later(clearMusicLocations);
}

void LibraryState::scan() {
    later([this](ContentView& state) {
        if (canScan())
            scanLibrary(state);
    });
}

void LibraryState::backUp() {
    later(backupScannedLibrary);
}

void LibraryState::loadLibrary() {
    later(loadScannedLibrary);
}

void LibraryState::askToDelete() {
    view().showDeleteLibraryConfirmation.set(true);
}

void LibraryState::deleteLibrary() {
    keepLibrary();
    later(removeSavedLibrary);
}

void LibraryState::keepLibrary() {
    view().showDeleteLibraryConfirmation.set(false);
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
