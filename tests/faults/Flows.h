#pragma once

#include "faults/FailingCalls.h"
#include "support/TestPlatform.h"

#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace orvalen::test {

/// A program with a library, a list, rows, preferred matches and folders.
struct PreparedProgram : TestPlatform {
    PreparedProgram();
    /// Returns everything that a flow may change, as one text.
    std::string state();

    TemporaryFolder userFolder; ///< the folder of the user's own files
};

/// One use of one file by the program.
struct Flow {
    const char* name;
    const char* file; ///< in the user's folder; "support/…" is in the application-support folder
    std::function<void(PreparedProgram&)> act;
    /// Start of the error line; empty if no line is written.
    std::string failure;
    /// Content of the file, if the flow reads it; else empty.
    std::string content = {};
    bool isAtomic = false; ///< an export, which first writes a line with its format

    bool reads() const { return !content.empty(); }
};

std::vector<Flow> flows();
std::string nameOfTest(const testing::TestParamInfo<Flow>& info);

/// One run of a flow in its own program.
class FlowRun {
public:
    /// Prepares the file: the content to read, or for a writing flow a long old file or none.
    FlowRun(const Flow& flow, bool hasOldFile);

    void act(const std::optional<Fault>& fault = {});

    std::string path() const;
    std::optional<std::string> content() const;
    /// Returns the console lines, with {} for the path.
    std::vector<std::string> lines() const;
    /// Returns the names of temporary files beside the file of the flow.
    std::vector<std::string> temporaryFiles() const;

    PreparedProgram program;
    std::string stateBefore;
    std::optional<std::string> contentBefore;
    std::vector<int> counts; ///< numbers of calls in act()

private:
    const Flow& flow_;
};

} // namespace orvalen::test
