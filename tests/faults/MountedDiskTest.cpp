#include "faults/MountedDisk.h"
#include "platform/system/MountWatch.h"
#include "support/TestPlatform.h"

#include <chrono>
#include <gmock/gmock.h>
#include <optional>
#include <sys/mount.h>

namespace orvalen::test {
namespace {

TEST(FullDisk, KeepsTheOldFileUntilThereIsRoom) {
    if (!canMount())
        GTEST_SKIP() << "no disk can be mounted here";
    const std::string text(100'000, 'x');
    for (const auto write : {&writeWholeFile, &writeFileAtomically})
        for (const bool hasOldFile : {false, true}) {
            MountedDisk disk;
            const TemporaryFolder folder;
            const std::string path = folder.path("wedding.m3u");
            if (hasOldFile)
                folder.write("wedding.m3u", "old");
            disk.fillBut(16 * 1024);
            EXPECT_EQ(write(path, text).error().description, "No space left on device");
            EXPECT_EQ(readWholeFile(path).value_or("none"), hasOldFile ? "old" : "none");
            disk.makeRoom();
            EXPECT_TRUE(write(path, text));
            EXPECT_EQ(folder.read("wedding.m3u"), text);
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
