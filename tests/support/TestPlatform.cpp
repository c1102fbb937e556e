#include "support/TestPlatform.h"

namespace orvalen::test {

TestPlatform::TestPlatform()
    : platform{console,     mainQueue,    matchQueue,   tagQueue,    dialogs,
               mediaAssets, audioPlayers, folderAccess, userFolders, notifications,
               httpSession, sound,        browser,      bundle,      driveWatch},
      view(platform, [this]() -> PlaylistDatabaseManager& { return database(); }) {
    becomeMainThread();
    userFolders.folder = support_.path();
}

TestPlatform::~TestPlatform() = default;

PlaylistDatabaseManager& TestPlatform::database() {
    if (!database_)
        database_ = std::make_unique<PlaylistDatabaseManager>(userFolders, console);
    return *database_;
}

void TestPlatform::settle() {
    do {
        mainQueue.run();
    } while (matchQueue.runOne() || tagQueue.runOne() || mainQueue.pending() > 0);
}

} // namespace orvalen::test
