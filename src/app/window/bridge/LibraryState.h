#pragma once

#include "app/window/bridge/MusicFoldersModel.h"
#include "app/window/bridge/StateProperties.h"

#include <QString>

namespace orvalen {

/// The library controls: folders, scan, library files, and the question before the library is deleted.
class LibraryState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window")
    Q_PROPERTY(orvalen::MusicFoldersModel* folders READ folders CONSTANT)
    Q_PROPERTY(bool hasFolders READ hasFolders NOTIFY changed)
    Q_PROPERTY(bool scanning READ scanning NOTIFY changed)
    Q_PROPERTY(bool scanBarVisible READ scanBarVisible NOTIFY changed)
    Q_PROPERTY(double scanProgress READ scanProgress NOTIFY changed)
    Q_PROPERTY(QString scanFileName READ scanFileName NOTIFY changed)
    Q_PROPERTY(QString scanButtonText READ scanButtonText NOTIFY changed)
    Q_PROPERTY(bool canScan READ canScan NOTIFY changed)
    Q_PROPERTY(QString indexedText READ indexedText NOTIFY changed)
    Q_PROPERTY(bool asksToDelete READ asksToDelete NOTIFY changed)

public:
    LibraryState(ContentView& view, ChangeNotifier& notifier);

    MusicFoldersModel* folders() { return &folders_; }
    bool hasFolders() const;
    bool scanning() const;
    bool scanBarVisible() const;
    double scanProgress() const;
    QString scanFileName() const;
    QString scanButtonText() const;
    bool canScan() const;
    QString indexedText() const;
    bool asksToDelete() const;

    Q_INVOKABLE void addFolders();
    Q_INVOKABLE void removeFolder(const QString& path);
    Q_INVOKABLE void clearFolders();
    Q_INVOKABLE void scan();
    Q_INVOKABLE void backUp();
    Q_INVOKABLE void loadLibrary();
    Q_INVOKABLE void askToDelete();
    Q_INVOKABLE void deleteLibrary();
    Q_INVOKABLE void keepLibrary();
    Q_INVOKABLE void loadSession();
    Q_INVOKABLE void loadLastSession();

protected:
    void refresh() override;

private:
    MusicFoldersModel folders_;
};

} // namespace orvalen
