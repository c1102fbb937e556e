#include "faults/Flows.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <system_error>

namespace orvalen::test {
namespace {

/// Before the first byte is written, nothing of an old file is lost.
bool precedesWriting(const Fault& fault) {
    return fault.call < Call::write ||
           (fault.call == Call::write && fault.number == 0 && fault.way == Fault::Way::error);
}

class FileFaults : public testing::TestWithParam<Flow> {
protected:
    /// The console lines of a run that failed. An export says first what it sets out to do.
    std::vector<std::string> failureLines(int error) const {
        std::vector<std::string> lines;
        if (flow.access == Access::writeAtomically)
            lines.push_back(flow.success.front());
        if (!flow.failure.empty())
            lines.push_back(flow.failure + std::generic_category().message(error));
        return lines;
    }

    void failAndTryAgain(const Fault& fault, bool hasOldFile, FlowRun& faultless) {
        SCOPED_TRACE(describe(fault) + (hasOldFile ? ", over an old file" : ""));
        FlowRun run(flow, hasOldFile);
        run.act(fault);
        const bool saysSuccess = run.lines() == flow.success;
        if (!saysSuccess) {
            EXPECT_EQ(run.lines(), failureLines(fault.error));
        }
        expectBeforeOrAfter(run, faultless, saysSuccess);
        if (!saysSuccess &&
            (flow.access == Access::writeAtomically || precedesWriting(fault) || !hasOldFile)) {
            EXPECT_EQ(run.content(), run.contentBefore);
        }
        EXPECT_EQ(run.otherFiles(), faultless.otherFiles()) << "a temporary file is left";

        run.act();
        EXPECT_EQ(run.lines(), flow.success) << "the second attempt";
        EXPECT_EQ(run.content(), faultless.content());
        const bool loadsTwice = flow.access == Access::read && saysSuccess;
        if (!loadsTwice) { // a library file adds its folders each time
            EXPECT_EQ(run.program.state(), faultless.program.state());
        }
    }

    void expectBeforeOrAfter(FlowRun& run, FlowRun& faultless, bool saysSuccess) {
        const std::string after = faultless.program.state();
        const bool isSilentRead = flow.access == Access::read && flow.failure.empty();
        if (isSilentRead) {
            EXPECT_THAT(run.program.state(), testing::AnyOf(run.stateBefore, after));
        } else {
            EXPECT_EQ(run.program.state(), saysSuccess ? after : run.stateBefore);
        }
        if (!saysSuccess || flow.access == Access::read)
            return;
        if (flow.ignoresErrors) {
            EXPECT_THAT(run.content(), testing::AnyOf(std::nullopt, faultless.content()));
        } else {
            EXPECT_EQ(run.content(), faultless.content()) << "success was reported";
        }
    }

    const Flow flow = GetParam();
};

TEST_P(FileFaults, LeaveTheStateBeforeOrAfterAndTheNextAttemptWorks) {
    for (const bool hasOldFile : {false, true}) {
        if (hasOldFile && (flow.access == Access::read || flow.ignoresErrors))
            continue;
        FlowRun faultless(flow, hasOldFile);
        faultless.act();
        ASSERT_EQ(faultless.lines(), flow.success);
        const std::vector<Fault> faults = faultsOf(faultless.counts, {EIO, ENOSPC});
        EXPECT_GE(faults.size(), 12U) << "the calls were not seen";
        for (const Fault& fault : faults)
            failAndTryAgain(fault, hasOldFile, faultless);
    }
}

INSTANTIATE_TEST_SUITE_P(Flows, FileFaults, testing::ValuesIn(flows()), nameOfTest);

} // namespace
} // namespace orvalen::test
