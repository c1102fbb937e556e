#include "app/ContentView.h"
#include "core/Keys.h"
#include "library/LibraryIndexState.h"
#include "matching/MatchEngine.h"
#include "platform/system/ThreadWorkerQueue.h"
#include "support/MadeLibrary.h"
#include "support/TestPlatform.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace orvalen::test {
namespace {

/// The fake world with a real thread behind the match queue.
struct ThreadedWorld : TestPlatform {
    ThreadedWorld() { database(); }

    ThreadWorkerQueue realQueue;
    Platform real{console,      mainQueue,   realQueue,     tagQueue,    dialogs, mediaAssets, audioPlayers,
                  folderAccess, userFolders, notifications, httpSession, sound,   browser,     bundle};
    ContentView state{real, [this]() -> PlaylistDatabaseManager& { return database(); }};
};

TEST(MatchThreads, RunsBesideAMainThreadThatReplacesTheLibraryAndRemembersChoices) {
    MadeLibrary made(3);
    const LibraryIndex first = made.index(2000);
    const std::vector<std::string> lines = made.wantedLines(150);
    const LibraryIndex second = made.index(500);

    ThreadedWorld world;
    replaceIndex(world.state, first);
    std::size_t runs = 0;
    std::vector<MatchedTrack> rows;
    world.state.isMatching.observe([&] {
        ++runs;
        if (rows.empty())
            rows = world.state.matchedTracks.get();
    });
    matchLines(lines, world.state);
    matchLines(lines, world.state);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    for (int turn = 0; runs < 2 && std::chrono::steady_clock::now() < end; ++turn) {
        world.mainQueue.runOne();
        if (turn % 16 == 0)
            world.database().savePreferredMatch("key " + std::to_string(turn % 7), "/m/x.mp3");
        if (turn % 64 == 0)
            replaceIndex(world.state, turn % 128 == 0 ? second : first);
        world.state.trackDict.update([](LibraryIndex& index) {
            fileTrack(index, Track{"t", "a", "", "/p", {}});
        });
        world.state.matchInputFormat.set(turn % 2 == 0 ? "title-artist" : "artist-title");
    }
    ASSERT_EQ(runs, 2U);

    const LibraryCatalog catalog(first);
    ASSERT_EQ(rows.size(), lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto request = parseWantedLine(lines[i], "artist-title");
        const auto positions = findOptions(catalog, *request);
        ASSERT_EQ(rows[i].options.size(), positions.size()) << lines[i];
        for (std::size_t k = 0; k < positions.size(); ++k)
            EXPECT_EQ(rows[i].options[k], first.track(positions[k]).toTrack()) << lines[i];
    }
}

TEST(MatchThreads, MakeOneCatalogTogether) {
    const LibraryIndex index = MadeLibrary(5).index(3000);
    const Request request{"a", "e"};
    std::vector<std::size_t> counts(4);
    {
        std::vector<std::jthread> threads;
        for (std::size_t& count : counts)
            threads.emplace_back(
                [&count, &request, index] { count = findOptions(LibraryCatalog(index), request).size(); });
    }
    EXPECT_GT(counts[0], 0U);
    EXPECT_EQ(counts, std::vector<std::size_t>(4, counts[0]));
}

} // namespace
} // namespace orvalen::test
