#pragma once

#include "faults/FailingCalls.h"
#include "support/TestPlatform.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
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

enum class Access { writeInPlace, writeAtomically, read };

/// One thing that the program does with one file.
struct Flow {
    const char* name;
    Access access;
    /// The path, or its beginning where the rest is a time.
    std::function<std::string(PreparedProgram&)> file;
    std::function<void(PreparedProgram&)> act;
    /// The console lines when it works; {} stands for the path.
    std::vector<std::string> success;
    /// What the error line begins with; empty: no message.
    std::string failure;
    /// Of a flow that reads: what is in the file.
    std::string content = {};
    /// The flow writes its success line even when it failed.
    bool ignoresErrors = false;
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

    /// The content of the first file whose path begins with the flow's.
    std::optional<std::string> content();
    /// The console lines, with {} for the path.
    std::vector<std::string> lines();
    /// The number of files beside the flow's own and the copies of what a load replaced.
    std::size_t otherFiles();

    PreparedProgram program;
    std::string stateBefore;
    std::optional<std::string> contentBefore;
    std::vector<int> counts; ///< of the calls in act()

private:
    const Flow& flow_;
};

} // namespace orvalen::test
