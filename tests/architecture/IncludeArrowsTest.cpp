#include "support/Folders.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <string>

namespace {

namespace fs = std::filesystem;

/// The floor of each folder of src/; an include may go to the same floor or further down.
const std::map<std::string, int> floors = {
    {"core", 1},
    {"platform", 1},
    {"matching", 3},
    {"library", 3},
    {"import", 3},
    {"export", 3},
    {"session", 3},
    {"preview", 3},
    {"platform/desktop", 4},
    {"app/window", 4},
    {"app/state", 2},
    {"app", 3},
    {"platform/system", 2},
    {"platform/tags", 2},
    {"app/window/bridge", 4},
    {"app/window/accessible", 4},
    {"app/window/style", 4},
    {"app/window/symbols", 4},
};

int floorOf(const std::string& relative) {
    const fs::path path(relative);
    const std::string folder = path.parent_path().generic_string();
    if (folder.empty())
        return 5;
    const auto found = floors.find(folder);
    return found == floors.end() ? -1 : found->second;
}

bool mayIncludeToolkit(const std::string& relative) {
    return relative.starts_with("platform/desktop/") || relative.starts_with("platform/tags/") ||
           relative.starts_with("app/window/") || relative == "main.cpp";
}

bool isToolkitHeader(const std::string& header) {
    static const std::regex toolkit(R"((Q[A-Z]\w*|Qt\w*/.*|taglib/.*|mpv/.*|\w*file\.h))");
    return std::regex_match(header, toolkit);
}

TEST(IncludeArrows, PointDownAndKeepToolkitsOutOfTheLogic) {
    const fs::path root = fs::path(ORVALEN_SOURCE_DIR) / "src";
    const std::regex include(R"re(^\s*#\s*include\s*(["<])([^">]+)[">])re");
    std::size_t ownIncludes = 0;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp")
            continue;
        const std::string file = entry.path().lexically_relative(root).generic_string();
        const int floor = floorOf(file);
        ASSERT_GT(floor, 0) << file << " stands in a folder that no floor knows";
        std::ifstream stream(entry.path());
        ASSERT_TRUE(stream) << file;
        for (std::string line; std::getline(stream, line);) {
            std::smatch match;
            if (!std::regex_search(line, match, include))
                continue;
            const std::string header = match[2];
            if (match[1] == "<") {
                EXPECT_TRUE(mayIncludeToolkit(file) || !isToolkitHeader(header))
                    << file << " includes " << header;
                continue;
            }
            ++ownIncludes;
            EXPECT_LE(floorOf(header), floor) << file << " includes " << header << " above it";
        }
    }
    EXPECT_GT(ownIncludes, 50U) << "the include lines were not read";
}

} // namespace
