#include "faults/FaultReport.h"
#include "faults/Trial.h"

#include <cerrno>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

/// What stands where the flow writes, compared with what stood there and what should.
enum class Left { before, after, torn };

struct Outcome {
    bool works;
    Left left;

    bool operator==(const Outcome&) const = default;
};

/// What has to come of a fault. A plain write replaces the bytes in place: from the first of them on, the old
/// file is gone.
Outcome expected(Access access, const Fault& fault, bool isOldThere) {
    const Outcome works{true, Left::after};
    const Outcome fails{false, Left::before};
    const bool goesOn = fault.way == Fault::Way::halfThenOn;
    switch (fault.call) {
    case Call::reserve: // not every file system can
        return fault.error == ENOSPC ? fails : works;
    case Call::permissions:
        return works;
    case Call::read:
        return goesOn ? works : fails;
    case Call::write:
        if (goesOn)
            return works;
        if (fault.way == Fault::Way::halfThenEnd && access == Access::plainWrite && isOldThere)
            return {false, Left::torn};
        return fails;
    case Call::truncate:
        return isOldThere ? Outcome{false, Left::torn} : fails;
    case Call::close:
        if (access == Access::read)
            return works;
        return access == Access::plainWrite && isOldThere ? Outcome{false, Left::after} : fails;
    default:
        return fails;
    }
}

std::vector<Fault> faultsOf(Access access, Call call, int number) {
    std::vector<Fault> faults{{call, number, Fault::Way::error, EIO},
                              {call, number, Fault::Way::error, EACCES}};
    if (access != Access::read)
        faults.push_back({call, number, Fault::Way::error, ENOSPC});
    if (call == Call::read || call == Call::write)
        faults.push_back({call, number, Fault::Way::halfThenOn, 0});
    if (call == Call::write)
        faults.push_back({call, number, Fault::Way::halfThenEnd, ENOSPC});
    return faults;
}

class FileFaults : public testing::TestWithParam<Flow> {
protected:
    Outcome outcomeOf(Trial& run, Trial& faultless) {
        const auto content = run.content();
        const Left left = content == faultless.content() ? Left::after
                          : content == run.contentBefore ? Left::before
                                                         : Left::torn;
        const bool works = flow.saysAlways ? left == Left::after
                                           : run.state == faultless.state && run.lines() == flow.success;
        return {works, left};
    }

    /// What came of the fault, in words.
    std::string suffer(const Fault& fault, bool isOldThere) {
        Trial& faultless = isOldThere ? overOld : anew;
        Trial run(flow, isOldThere);
        run.act(fault);
        Outcome wanted = expected(flow.access, fault, isOldThere);
        if (flow.access == Access::read)
            wanted.left = Left::after; // reading changes no file
        const Outcome outcome = outcomeOf(run, faultless);
        EXPECT_EQ(outcome.works, wanted.works);
        EXPECT_EQ(outcome.left, wanted.left);
        EXPECT_EQ(run.lines(), wanted.works ? flow.success : failureLines(flow, fault.error));
        EXPECT_EQ(run.state, wanted.works ? faultless.state : run.before);
        EXPECT_EQ(run.neighbours(), faultless.neighbours()) << "something was left beside";

        run.act(); // and the program goes on
        EXPECT_EQ(run.lines(), flow.success);
        EXPECT_EQ(run.content(), faultless.content());
        if (!wanted.works) {
            EXPECT_EQ(run.state, faultless.state);
        }
        return inWords(outcome, isOldThere);
    }

    std::string inWords(const Outcome& outcome, bool isOldThere) const {
        if (flow.access == Access::read)
            return outcome.works ? "loaded" : "everything as before";
        switch (outcome.left) {
        case Left::before:
            return isOldThere ? "old file whole" : "no file";
        case Left::after:
            return "new file whole";
        case Left::torn:
            return "old file damaged";
        }
        return {};
    }

    void sufferBothWays(const Fault& fault) {
        SCOPED_TRACE(std::string(nameOf(fault.call)) + " " + std::to_string(fault.number) + ": " +
                     nameOf(fault));
        // The name of an automatic backup is not known beforehand.
        std::string outcome = suffer(fault, false);
        if (flow.access != Access::read && !flow.saysAlways) {
            const std::string over = suffer(fault, true);
            if (over != outcome)
                outcome = over + "; where none was, " + outcome;
        }
        const bool works = expected(flow.access, fault, false).works;
        std::string spoken = works ? "" : flow.failure && !flow.saysAlways ? "told; " : "silent; ";
        report(flow.name, nameOf(fault.call), nameOf(fault), spoken + outcome);
    }

    void SetUp() override {
        overOld.act();
        anew.act();
    }

    const Flow& flow = GetParam();
    // Without a fault.
    Trial overOld{flow, true};
    Trial anew{flow, false};
};

TEST_P(FileFaults, EveryCallFailsInTurn) {
    EXPECT_EQ(overOld.lines(), flow.success);
    EXPECT_EQ(anew.lines(), flow.success);
    int calls = 0;
    for (const Call call : allCalls()) {
        const int count = overOld.counts[static_cast<std::size_t>(call)];
        calls += count;
        for (int number = 0; number < count; ++number)
            for (const Fault& fault : faultsOf(flow.access, call, number))
                sufferBothWays(fault);
    }
    EXPECT_GE(calls, 4) << "at least opened, looked at, read or written, and closed";
}

INSTANTIATE_TEST_SUITE_P(Flows, FileFaults, testing::ValuesIn(flows()), nameOfTest);

} // namespace
} // namespace orvalen::test
