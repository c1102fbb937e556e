#pragma once

#include "support/TestPlatform.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvalen::test {

/// A program in the middle of its work: a library, a list, rows, choices, folders.
struct World : TestPlatform {
    World();
    /// Everything that a flow may change, as one text.
    std::string state();

    TemporaryFolder chosen; ///< where the user's own files are
};

enum class Access { plainWrite, atomicWrite, read };

/// One thing that the program does with one file.
struct Flow {
    const char* name;
    Access access;
    /// The path, or what it begins with where the rest is a time.
    std::function<std::string(World&)> file;
    std::function<void(World&)> act;
    /// The console lines when it works; {} stands for the path.
    std::vector<std::string> success;
    /// What the console line begins with when it fails; null: nothing is said.
    const char* failure;
    /// Of a read: what stands in the file.
    std::string content = {};
    /// A failure is told like a success.
    bool saysAlways = false;
};

const std::vector<Flow>& flows();
/// What the console shows when the flow fails with this error of the system.
std::vector<std::string> failureLines(const Flow& flow, int error);
std::string nameOfTest(const testing::TestParamInfo<Flow>& info);

} // namespace orvalen::test
