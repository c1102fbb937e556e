#pragma once

#include "app/state/ContentView.h"
#include "library/PlaylistDatabaseManager.h"
#include "support/FakeDialogs.h"
#include "support/FakeMainQueue.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <memory>

namespace orvalen::test {

/// The whole outer world, faked, with a state over it. The application-support folder is a real temporary one
/// and the database in it is real.
class TestPlatform {
public:
    TestPlatform();
    ~TestPlatform();

    /// Runs posts and jobs until nothing is left of either.
    void settle();
    /// The application-support folder, with "Orvalen" in it once somebody asked for it.
    const TemporaryFolder& support() const { return support_; }
    PlaylistDatabaseManager& database();

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

    Platform platform;
    ContentView view;

private:
    TemporaryFolder support_;
    std::unique_ptr<PlaylistDatabaseManager> database_;
};

} // namespace orvalen::test
