#include "faults/Flows.h"
#include "library/FolderScan.h"
#include "library/LibraryFile.h"

#include <cerrno>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::Contains;
using testing::StartsWith;

class FolderFaults : public testing::TestWithParam<int> {
protected:
    /// Makes one call on paths below `beginning` fail while the operation runs.
    template <typename Operation>
    void runFailing(Call call, int number, std::string beginning, Operation operation) {
        const FailingCalls calls({std::move(beginning)}, Fault{call, number, Fault::Way::error, GetParam()});
        operation(program.view);
        program.settle();
        ASSERT_GT(calls.counts().at(static_cast<std::size_t>(call)), number);
    }

    PreparedProgram program;
};

TEST_P(FolderFaults, ASupportFolderThatCannotBeMadeIsMadeTheNextTime) {
    const std::string folder = program.userFolder.path("new");
    program.userFolders.folder = folder;
    runFailing(Call::makeFolder, 0, folder, savePersistentLibrary);
    EXPECT_THAT(program.console.lines(), Contains(StartsWith("❌ Failed to save persistent library: ")));
    program.console.clear();
    savePersistentLibrary(program.view);
    EXPECT_THAT(program.console.lines(),
                Contains("✅ Persistent library saved to " + folder + "/Orvalen/library.orvl"));
}

TEST_P(FolderFaults, AMusicFolderThatCannotBeOpenedIsLeftOutOfTheScan) {
    program.userFolder.write("music/a.mp3");
    program.userFolder.write("music/shut/b.mp3");
    program.view.musicFolderURLs.set({{program.userFolder.path("music")}});
    runFailing(Call::openFolder, 1, program.userFolder.path("music"), scanLibrary);
    EXPECT_EQ(program.view.trackCount.get(), 1);
    ASSERT_EQ(program.dialogs.messages.size(), 1U);
    EXPECT_EQ(program.dialogs.messages.front().title, "Library Refreshed");
}

TEST_P(FolderFaults, ALibraryFileThatCannotBeDeletedStillEmptiesTheLibrary) {
    savePersistentLibrary(program.view);
    program.console.clear();
    runFailing(Call::remove, 0, program.support().path("Orvalen/library.orvl"), removeSavedLibrary);
    EXPECT_EQ(program.view.trackCount.get(), 0);
    EXPECT_THAT(program.database().allPreferredMatches(), testing::IsEmpty());
    EXPECT_THAT(program.console.lines(), testing::IsEmpty());
    EXPECT_TRUE(program.support().exists("Orvalen/library.orvl"));
}

INSTANTIATE_TEST_SUITE_P(Errors, FolderFaults, testing::Values(EIO, EACCES, ENOSPC));

} // namespace
} // namespace orvalen::test
