#include "support/Folders.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// The folders of src/; "" is src/ itself. A folder includes only its own headers and those of earlier
/// folders, so there is no cycle.
const std::vector<std::string> logic = {
    "core",    "platform", "app/state", "platform/system", "platform/tags", "search", "import",
    "library", "preview",  "session",   "matching",        "export",        "tidy",   "app"};
/// These folders come after the logic and may include headers of Qt and libmpv.
const std::vector<std::string> desktop = {"platform/desktop",
                                          "app/window/accessible",
                                          "app/window/style",
                                          "app/window/symbols",
                                          "app/window/bridge",
                                          "app/window",
                                          ""};

/// Returns the position in the two lists, joined.
std::size_t placeOf(const std::string& folder) {
    if (const auto found = std::ranges::find(logic, folder); found != logic.end())
        return static_cast<std::size_t>(found - logic.begin());
    const auto found = std::ranges::find(desktop, folder);
    EXPECT_NE(found, desktop.end()) << folder << " has no place in the order of folders";
    return logic.size() + static_cast<std::size_t>(found - desktop.begin());
}

struct Include {
    std::string file;
    std::string header;
    bool isOwn; ///< in quotation marks, so a header of this project
};

std::string folderOf(const std::string& file) {
    return fs::path(file).parent_path().generic_string();
}

std::vector<Include> readIncludes() {
    const fs::path root = fs::path(ORVALEN_SOURCE_DIR) / "src";
    const std::regex line(R"re(^\s*#\s*include\s*(["<])([^">]+)[">])re");
    std::vector<Include> includes;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp")
            continue;
        std::ifstream stream(entry.path());
        EXPECT_TRUE(stream) << entry.path();
        std::smatch match;
        for (std::string text; std::getline(stream, text);)
            if (std::regex_search(text, match, line))
                includes.push_back(
                    {entry.path().lexically_relative(root).generic_string(), match[2], match[1] == "\""});
    }
    EXPECT_GT(includes.size(), 500U) << "the include lines were not read";
    return includes;
}

TEST(IncludeArrows, PointToTheSameFolderOrAnEarlierOne) {
    for (const auto& [file, header, isOwn] : readIncludes())
        EXPECT_TRUE(!isOwn || placeOf(folderOf(header)) <= placeOf(folderOf(file)))
            << file << " includes " << header;
}

TEST(IncludeArrows, KeepToolkitsOutOfTheLogic) {
    const std::regex toolkit(R"((Q[A-Z]\w*|Qt\w*/.*|mpv/.*|\w*file\.h))");
    for (const auto& [file, header, isOwn] : readIncludes())
        EXPECT_TRUE(isOwn || placeOf(folderOf(file)) >= logic.size() || !std::regex_match(header, toolkit))
            << file << " includes " << header;
}

} // namespace
