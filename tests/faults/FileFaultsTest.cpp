#include "faults/Flows.h"
#include "library/FolderScan.h"

#include <cerrno>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::AnyOf;
using testing::IsEmpty;
using testing::StartsWith;

/// Returns whether the fault happens before the first byte is written. The old file must then be unchanged.
bool precedesWriting(const Fault& fault) {
    return fault.call < Call::write ||
           (fault.call == Call::write && fault.number == 0 && fault.way == Fault::Way::error);
}

class FileFaults : public testing::TestWithParam<Flow> {
protected:
    /// Compares a run with a fault, and the attempt after it, with a run without faults.
    void failAndTryAgain(const Fault& fault, bool hasOldFile, const FlowRun& whole,
                         const std::string& after) {
        SCOPED_TRACE(describe(fault) + (hasOldFile ? ", over an old file" : ""));
        FlowRun run(flow, hasOldFile);
        run.act(fault);
        std::vector<std::string> lines = run.lines();
        const bool saysSuccess = lines == whole.lines();
        const std::string state = run.program.state();
        if (flow.reads() && flow.failure.empty()) {
            EXPECT_THAT(lines, IsEmpty());
            EXPECT_THAT(state, AnyOf(run.stateBefore, after));
        } else if (saysSuccess) {
            EXPECT_EQ(state, after);
            EXPECT_EQ(run.content(), whole.content());
        } else {
            if (flow.isAtomic)
                lines.erase(lines.begin());
            EXPECT_THAT(lines, testing::ElementsAre(StartsWith(flow.failure)));
            EXPECT_EQ(state, run.stateBefore);
            if (flow.isAtomic || precedesWriting(fault) || !hasOldFile) {
                EXPECT_EQ(run.content(), run.contentBefore);
            }
        }
        EXPECT_THAT(run.temporaryFiles(), IsEmpty());

        run.act();
        EXPECT_EQ(run.lines(), whole.lines()) << "the second attempt";
        EXPECT_EQ(run.content(), whole.content());
        const bool isLoadedTwice =
            flow.reads() && state != run.stateBefore; // a second load adds its folders again
        if (!isLoadedTwice) {
            EXPECT_EQ(run.program.state(), after);
        }
    }

    const Flow flow = GetParam();
};

TEST_P(FileFaults, LeaveTheStateBeforeOrAfterAndTheNextAttemptWorks) {
    for (const bool hasOldFile : {false, true}) {
        if (hasOldFile && flow.reads())
            continue;
        FlowRun whole(flow, hasOldFile);
        whole.act();
        const std::vector<Fault> faults = faultsOf(whole.counts, {EIO, ENOSPC});
        EXPECT_GE(faults.size(), 12U) << "the calls were not seen";
        const std::string after = whole.program.state();
        for (const Fault& fault : faults)
            failAndTryAgain(fault, hasOldFile, whole, after);
    }
}

TEST(FolderFaults, AMusicFolderThatCannotBeOpenedIsLeftOutOfTheScan) {
    PreparedProgram program;
    program.userFolder.write("music/a.mp3");
    program.userFolder.write("music/shut/b.mp3");
    program.view.musicFolderURLs.set({{program.userFolder.path("music")}});
    const FailingCalls calls({program.userFolder.path("music")},
                             Fault{Call::openFolder, 1, Fault::Way::error, EACCES});
    scanLibrary(program.view);
    program.settle();
    EXPECT_EQ(calls.counts().at(static_cast<std::size_t>(Call::openFolder)), 2);
    EXPECT_EQ(program.view.trackCount.get(), 1);
    EXPECT_EQ(program.dialogs.messages.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Flows, FileFaults, testing::ValuesIn(flows()), nameOfTest);

} // namespace
} // namespace orvalen::test
