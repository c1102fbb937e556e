#include "app/ContentView.h"
#include "library/FolderScan.h"
#include "library/LibraryFile.h"
#include "matching/MatchEngine.h"
#include "platform/system/ThreadWorkerQueue.h"
#include "support/TestPlatform.h"

#include <chrono>
#include <gmock/gmock.h>
#include <thread>

namespace orvalen::test {
namespace {

/// The fake world with real threads behind both queues.
struct ThreadedWorld : TestPlatform {
    ThreadedWorld() { database(); }

    template <typename Condition>
    bool runUntil(Condition condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!condition() && std::chrono::steady_clock::now() < end)
            if (!mainQueue.runOne())
                std::this_thread::yield();
        return condition();
    }

    ThreadWorkerQueue matching;
    ThreadWorkerQueue tagging;
    Platform real{console,      mainQueue,   matching,      tagging,     dialogs, mediaAssets, audioPlayers,
                  folderAccess, userFolders, notifications, httpSession, sound,   browser,     bundle};
    ContentView state{real, [this]() -> PlaylistDatabaseManager& { return database(); }};
};

TEST(ScanThreads, TwoScansAndAMatchRunGoOnWhileTheLibraryIsRemoved) {
    TemporaryFolder music;
    for (int i = 0; i < 150; ++i) {
        music.write("first/song " + std::to_string(i) + ".mp3");
        music.write("second/song " + std::to_string(i) + ".mp3");
    }
    ThreadedWorld world;
    int runs = 0;
    world.state.isMatching.observe([&] { runs += world.state.isMatching.get() ? 0 : 1; });

    world.state.musicFolderURLs.set({{music.path("first")}});
    scanLibrary(world.state);
    world.state.musicFolderURLs.set({{music.path("second")}});
    scanLibrary(world.state);
    matchLines({"Unknown - song 7", "Unknown - song"}, world.state);
    ASSERT_TRUE(world.runUntil([&] { return world.dialogs.messages.size() == 1; }));
    matchLines({"Unknown - song 7", "Unknown - song"}, world.state);
    removeSavedLibrary(world.state);
    EXPECT_EQ(world.state.trackCount.get(), 0);
    ASSERT_TRUE(world.runUntil([&] { return world.dialogs.messages.size() == 2 && runs == 2; }));

    EXPECT_EQ(world.state.trackCount.get(), 150) << "the scan that ends later fills the library again";
    EXPECT_EQ(world.state.trackDict.get().track(0).path.find(music.path("second")), 0U);
    ASSERT_EQ(world.state.matchedTracks.get().size(), 2U);
    EXPECT_EQ(world.state.matchedTracks.get()[1].options.size(), 150U)
        << "the run had the library that stood when it was asked for";
}

} // namespace
} // namespace orvalen::test
