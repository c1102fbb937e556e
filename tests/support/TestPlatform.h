#pragma once

#include "app/state/ContentView.h"
#include "library/PlaylistDatabaseManager.h"
#include "support/FakeDialogs.h"
#include "support/FakeMainQueue.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <memory>

namespace orvalen::test {

/// Fakes of all platform interfaces, and a state that uses them. The application-support folder is a
/// temporary folder with a real database.
class TestPlatform {
public:
    TestPlatform() {
        becomeMainThread();
        userFolders.folder = support_.path();
    }

    /// Runs posts and jobs until none are left.
    void settle() {
        do {
            mainQueue.run();
        } while (matchQueue.runOne() || tagQueue.runOne() || mainQueue.pending() > 0);
    }
    /// Returns the application-support folder. It contains "Orvalen" after the first use.
    const TemporaryFolder& support() const { return support_; }
    PlaylistDatabaseManager& database() {
        if (!database_)
            database_ = std::make_unique<PlaylistDatabaseManager>(userFolders, console);
        return *database_;
    }

    FakeConsole console;
    FakeMainQueue mainQueue;
    FakeWorkerQueue matchQueue;
    FakeWorkerQueue tagQueue;
    FakeDialogs dialogs;
    FakeMediaAssets mediaAssets;
    FakeAudioPlayers audioPlayers;
    FakeFolderAccess folderAccess;
    FakeUserFolders userFolders;
    FakeNotifications notifications;
    FakeHttpSession httpSession;
    FakeSound sound;
    FakeBrowser browser;
    FakeBundle bundle;
    FakeDriveWatch driveWatch;

    Platform platform{console,     mainQueue,    matchQueue,   tagQueue,    dialogs,
                      mediaAssets, audioPlayers, folderAccess, userFolders, notifications,
                      httpSession, sound,        browser,      bundle,      driveWatch};
    ContentView view{platform, [this]() -> PlaylistDatabaseManager& { return database(); }};

private:
    TemporaryFolder support_;
    std::unique_ptr<PlaylistDatabaseManager> database_;
};

} // namespace orvalen::test
