#include "platform/system/MountWatch.h"

#include "faults/MountedDisk.h"
#include "support/FakeMainQueue.h"
#include "support/TemporaryFolder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <sys/mount.h>

namespace orvalen::test {
namespace {

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
