#pragma once

#include "app/window/bridge/MusicFoldersModel.h"
#include "app/window/bridge/QtText.h"
#include "app/window/bridge/StateProperties.h"
#include "library/LibraryFile.h"
#include "library/MusicFolders.h"

#include <QString>

namespace orvalen {

/// The library controls: folders, scan, library files, and the question before the library is deleted.
class LibraryState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(orvalen::MusicFoldersModel* folders READ folders CONSTANT)
    Q_PROPERTY(bool hasFolders READ hasFolders NOTIFY changed)
    Q_PROPERTY(bool scanning READ scanning NOTIFY changed)
    Q_PROPERTY(bool scanBarVisible READ scanBarVisible NOTIFY changed)
    Q_PROPERTY(double scanProgress READ scanProgress NOTIFY changed)
    Q_PROPERTY(QString scanFileName READ scanFileName NOTIFY changed)
    Q_PROPERTY(QString scanButtonText READ scanButtonText NOTIFY changed)
    Q_PROPERTY(bool canScan READ canScan NOTIFY changed)
    Q_PROPERTY(QString indexedText READ indexedText NOTIFY changed)
    Q_PROPERTY(QString unreadableText READ unreadableText NOTIFY changed)
    Q_PROPERTY(bool folderVanished READ folderVanished NOTIFY changed)
    Q_PROPERTY(bool asksToDelete READ asksToDelete NOTIFY changed)

public:
    LibraryState(ContentView& view, ChangeNotifier& notifier);

    MusicFoldersModel* folders() { return &folders_; }
    bool hasFolders() const { return !view().musicFolderURLs.get().empty(); }
    bool scanning() const { return scanProgress() > 0; }
    bool scanBarVisible() const { return scanProgress() > 0 && scanProgress() < 1; }
    double scanProgress() const { return view().scanProgress.get(); }
    QString scanFileName() const { return toShownText(view().scanningFileName.get()); }
    QString scanButtonText() const;
    bool canScan() const { return hasFolders() && !scanning(); }
    QString indexedText() const { return "Tracks Indexed: " + QString::number(view().trackCount.get()); }
    /// Returns what the last scan could not read; empty if it read everything.
    QString unreadableText() const;
    /// Returns whether a music folder disappeared during the last scan.
    bool folderVanished() const { return !view().lastScan.get().vanishedFolders.empty(); }
    bool asksToDelete() const { return view().showDeleteLibraryConfirmation.get(); }

    Q_INVOKABLE void addFolders();
    Q_INVOKABLE void removeFolder(const QString& path);
    Q_INVOKABLE void clearFolders() { later(clearMusicLocations); }
    Q_INVOKABLE void scan();
    Q_INVOKABLE void backUp() { later(backupScannedLibrary); }
    Q_INVOKABLE void loadLibrary() { later(loadScannedLibrary); }
    Q_INVOKABLE void loadLibraryOfBefore() { orvalen::loadLibraryOfBefore(view()); }
    Q_INVOKABLE void askToDelete() { view().showDeleteLibraryConfirmation.set(true); }
    Q_INVOKABLE void deleteLibrary() {
        keepLibrary();
        later(removeSavedLibrary);
    }
    Q_INVOKABLE void keepLibrary() { view().showDeleteLibraryConfirmation.set(false); }
    Q_INVOKABLE void loadSession();
    Q_INVOKABLE void loadLastSession();

protected:
    void refresh() override;

private:
    MusicFoldersModel folders_;
};

} // namespace orvalen
