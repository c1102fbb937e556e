#include "faults/FaultReport.h"
#include "faults/Flows.h"
#include "library/FolderScan.h"
#include "library/LibraryFile.h"

#include <cerrno>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::Contains;
using testing::IsEmpty;

constexpr int errors[] = {EIO, EACCES, ENOSPC};

TEST(FolderFaults, ASupportFolderThatCannotBeMadeIsToldByWhatNeedsIt) {
    for (const int error : errors) {
        World world;
        const Fault fault{Call::makeFolder, 0, Fault::Way::error, error};
        world.userFolders.folder = world.chosen.path("new");
        {
            const FailingCalls calls({world.chosen.path("new")}, fault);
            savePersistentLibrary(world.view);
            ASSERT_GT(calls.count(Call::makeFolder), 0);
        }
        EXPECT_THAT(world.console.lines(),
                    Contains("❌ Failed to save persistent library: No such file or directory"));
        world.console.clear();
        savePersistentLibrary(world.view);
        EXPECT_THAT(world.console.lines(), Contains("✅ Persistent library saved to " +
                                                    world.chosen.path("new/Orvalen/library.orvl")));
        report("support folder", nameOf(fault.call), nameOf(fault),
               "told by each file that belongs there; made the next time");
    }
}

TEST(FolderFaults, AFolderOfMusicThatCannotBeOpenedHasNothingInIt) {
    for (const int error : errors) {
        World world;
        world.chosen.write("music/a.mp3");
        world.chosen.write("music/shut/b.mp3");
        world.view.musicFolderURLs.set({{world.chosen.path("music")}});
        const Fault fault{Call::openFolder, 1, Fault::Way::error, error};
        {
            const FailingCalls calls({world.chosen.path("music")}, fault);
            scanLibrary(world.view);
            world.settle();
        }
        EXPECT_EQ(world.view.trackCount.get(), 1);
        ASSERT_EQ(world.dialogs.messages.size(), 1U);
        EXPECT_EQ(world.dialogs.messages.front().title, "Library Refreshed");
        report("folder of a scan", nameOf(fault.call), nameOf(fault), "silent; the rest is scanned");
    }
}

TEST(FolderFaults, ALibraryFileThatCannotBeDeletedStaysAndTheLibraryIsEmptied) {
    for (const int error : errors) {
        World world;
        savePersistentLibrary(world.view);
        world.console.clear();
        const Fault fault{Call::remove, 0, Fault::Way::error, error};
        {
            const FailingCalls calls({world.support().path("Orvalen/library.orvl")}, fault);
            removeSavedLibrary(world.view);
            ASSERT_EQ(calls.count(Call::remove), 1);
        }
        EXPECT_EQ(world.view.trackCount.get(), 0);
        EXPECT_THAT(world.database().allPreferredMatches(), IsEmpty());
        EXPECT_THAT(world.console.lines(), IsEmpty());
        EXPECT_TRUE(world.support().exists("Orvalen/library.orvl"));
        report("library deleted", nameOf(fault.call), nameOf(fault), "silent; library emptied, file whole");
    }
}

} // namespace
} // namespace orvalen::test
