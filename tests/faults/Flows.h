#pragma once

#include "faults/FailingCalls.h"
#include "support/TestPlatform.h"

#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace orvalen::test {

/// The program with a library, a list, rows, preferred matches and folders.
struct PreparedProgram : TestPlatform {
    PreparedProgram();
    /// Everything that a flow may change, as one text.
    std::string state();

    TemporaryFolder userFolder; ///< where the user's own files are
};

/// One thing that the program does with one file.
struct Flow {
    const char* name;
    const char* file; ///< in the user's folder, or below "support/" in the application-support folder
    std::function<void(PreparedProgram&)> act;
    /// What the error line begins with; empty: no message.
    std::string failure;
    /// Of a flow that reads: what is in the file. Empty for one that writes.
    std::string content = {};
    bool isAtomic = false; ///< an export, which announces itself with one line

    bool reads() const { return !content.empty(); }
};

std::vector<Flow> flows();
std::string nameOfTest(const testing::TestParamInfo<Flow>& info);

/// One run of a flow in a program of its own.
class FlowRun {
public:
    /// Before the run, the file that is to be read exists. Of a flow that writes, a long old file exists or
    /// none.
    FlowRun(const Flow& flow, bool hasOldFile);

    void act(const std::optional<Fault>& fault = {});

    std::string path() const;
    std::optional<std::string> content() const;
    /// The console lines, with {} for the path.
    std::vector<std::string> lines() const;
    /// The names of the temporary files beside the flow's own.
    std::vector<std::string> temporaryFiles() const;

    PreparedProgram program;
    std::string stateBefore;
    std::optional<std::string> contentBefore;
    std::vector<int> counts; ///< of the calls in act()

private:
    const Flow& flow_;
};

} // namespace orvalen::test
