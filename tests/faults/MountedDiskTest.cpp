#include "core/LibraryIndexBuilder.h"

#include "faults/Flows.h"
#include "faults/MountedDisk.h"
#include "library/LibraryIndexState.h"
#include "platform/system/MountWatch.h"
#include "support/Builders.h"
#include "support/FakeMainQueue.h"
#include "support/TemporaryFolder.h"

#include <cerrno>
#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <sys/mount.h>
#include <system_error>

namespace orvalen::test {
namespace {

/// Makes the written data longer than the free space and than the old file.
void lengthen(const Flow& flow, PreparedProgram& program) {
    std::vector<Track> tracks;
    std::vector<MatchedTrack> rows;
    std::vector<Location> folders;
    for (int number = 0; number < 1000; ++number) {
        const Track each = track("An Artist", "A title of some length " + std::to_string(number));
        tracks.push_back(each);
        rows.push_back(row(each.artist, each.title, {each}, true));
        folders.push_back({"/Music/" + each.title});
    }
    replaceIndex(program.view, buildIndex(tracks));
    program.view.matchedTracks.set(rows);
    if (flow.file == std::string_view("support/folders.json")) // saving the library also writes this file
        program.view.musicFolderURLs.set(folders);
}

TEST(FullDisk, KeepsTheOldFileAndTheStateUntilThereIsRoom) {
    if (!canMount())
        GTEST_SKIP() << "no disk can be mounted here";
    for (const Flow& flow : flows())
        for (const bool hasOldFile : {false, true}) {
            if (flow.reads())
                continue;
            SCOPED_TRACE(flow.name);
            MountedDisk disk;
            FlowRun run(flow, hasOldFile);
            lengthen(flow, run.program);
            const std::string before = run.program.state();
            disk.fillBut(16 * 1024);
            run.act();
            EXPECT_EQ(run.lines().back(), flow.failure + std::generic_category().message(ENOSPC));
            EXPECT_EQ(run.content(), run.contentBefore);
            EXPECT_EQ(run.program.state(), before);
            EXPECT_THAT(run.temporaryFiles(), testing::IsEmpty());

            disk.makeRoom();
            run.act();
            EXPECT_GT(run.content().value_or("").size(), 40'000U) << "too little to fill the disk";
        }
}

/// As at the end of a scan. Deleted rows that could not be inserted again would be missing in the next
/// library file.
TEST(FullDisk, KeepsPreferredMatchesThatAreReplacedByThemselves) {
    if (!canMount())
        GTEST_SKIP() << "no disk can be mounted here";
    PreferredMatches choices;
    for (int number = 0; number < 2000; ++number)
        choices["key " + std::to_string(number)] = "/Music/" + std::string(60, 'p');
    for (const std::size_t left : {0U, 16U, 64U, 256U}) {
        MountedDisk disk;
        TestPlatform platform;
        platform.database().replacePreferredMatches(choices);
        disk.fillBut(left * 1024);
        platform.database().replacePreferredMatches(choices);
        EXPECT_EQ(platform.database().allPreferredMatches(), choices) << left << " kB";
        if (!platform.console.lines().empty()) {
            EXPECT_THAT(platform.console.lines(),
                        testing::ElementsAre("Error clearing preferred matches: database or disk is full"));
        }
    }
}

TEST(MountWatch, ReportsAFolderWhoseDriveIsUnmountedAndMountedAgain) {
    TemporaryFolder media;
    const std::string music = media.path("stick/Music");
    FakeMainQueue queue;
    MountWatch watch(queue, MountRoots{{media.path()}});
    std::optional<std::vector<Location>> reported;
    const auto nextReport = [&] {
        reported.reset();
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!reported && std::chrono::steady_clock::now() < end)
            queue.run();
        return reported;
    };
    watch.watch({{"/"}, {music}},
                [&](std::vector<Location> notConnected) { reported = std::move(notConnected); });
    const std::vector<Location> gone{{music}};
    EXPECT_EQ(nextReport(), gone);

    if (!canMount())
        GTEST_SKIP() << "this system does not let a test mount";
    media.makeFolder("stick");
    TemporaryFolder drive;
    drive.makeFolder("Music");
    ASSERT_EQ(::mount(drive.path().c_str(), media.path("stick").c_str(), nullptr, MS_BIND, nullptr), 0);
    EXPECT_EQ(nextReport(), std::vector<Location>());
    ASSERT_EQ(::umount(media.path("stick").c_str()), 0);
    EXPECT_EQ(nextReport(), gone);
}

} // namespace
} // namespace orvalen::test
