#include "app/state/ContentView.h"
#include "library/FolderScan.h"
#include "library/LibraryFile.h"
#include "matching/MatchRun.h"
#include "platform/system/ThreadWorkerQueue.h"
#include "support/TestPlatform.h"

#include <chrono>
#include <gmock/gmock.h>
#include <thread>

namespace orvalen::test {
namespace {

/// A test platform with real threads for both queues.
struct ThreadedPlatform : TestPlatform {
    ThreadedPlatform() { database(); }

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
    Platform real{console,     mainQueue,    matching,     tagging,     dialogs,
                  mediaAssets, audioPlayers, folderAccess, userFolders, notifications,
                  httpSession, sound,        browser,      bundle,      driveWatch};
    ContentView state{real, [this]() -> PlaylistDatabaseManager& { return database(); }};
};

TEST(LibraryThreads, ScansAndMatchRunsKeepTheirLibraryWhileTheMainThreadChangesIt) {
    TemporaryFolder music;
    for (int i = 0; i < 150; ++i) {
        music.write("first/song " + std::to_string(i) + ".mp3");
        music.write("second/song " + std::to_string(i) + ".mp3");
    }
    ThreadedPlatform test;
    int runs = 0;
    test.state.isMatching.observe([&] { runs += test.state.isMatching.get() ? 0 : 1; });
    int turn = 0;
    const auto changeLibrary = [&] {
        if (++turn > 200)
            return;
        if (turn % 16 == 0)
            test.database().savePreferredMatch("key " + std::to_string(turn % 7), "/m/x.mp3");
        test.state.trackDict.update([](LibraryIndex& index) {
            fileTrack(index, Track{"t", "a", "", "/p", {}});
        });
        test.state.matchInputFormat.set(turn % 2 == 0 ? "title-artist" : "artist-title");
    };

    test.state.musicFolderURLs.set({{music.path("first")}});
    scanLibrary(test.state);
    test.state.musicFolderURLs.set({{music.path("second")}});
    scanLibrary(test.state);
    matchLines({"Unknown - song 7", "Unknown - song"}, test.state);
    ASSERT_TRUE(test.runUntil([&] { return test.dialogs.messages.size() == 1; }));
    test.state.matchInputFormat.set("artist-title");
    matchLines({"Unknown - song 7", "Unknown - song"}, test.state);
    removeSavedLibrary(test.state);
    EXPECT_EQ(test.state.trackCount.get(), 0);
    ASSERT_TRUE(test.runUntil([&] {
        changeLibrary();
        return test.dialogs.messages.size() == 2 && runs == 2;
    }));

    EXPECT_EQ(test.state.trackCount.get(), 150) << "the scan that ends later fills the library again";
    EXPECT_EQ(test.state.trackDict.get().track(0).path.find(music.path("second")), 0U);
    ASSERT_EQ(test.state.matchedTracks.get().size(), 2U);
    EXPECT_EQ(test.state.matchedTracks.get()[1].options.size(), 150U)
        << "the run had the library and the format of its start";
}

} // namespace
} // namespace orvalen::test
