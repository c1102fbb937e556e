#include "support/Folders.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// The layer of each folder of src/, "" being src/ itself. A folder may include its own layer and those
/// below.
const std::map<std::string, int> layers = {{"core", 1},
                                           {"platform", 1}, //
                                           {"platform/system", 2},
                                           {"platform/tags", 2},
                                           {"app/state", 2}, //
                                           {"library", 3},
                                           {"session", 3},
                                           {"import", 3},
                                           {"export", 3},
                                           {"preview", 3},
                                           {"search", 3},
                                           {"matching", 3},
                                           {"tidy", 3},
                                           {"app", 3}, //
                                           {"platform/desktop", 4},
                                           {"app/window/accessible", 4},
                                           {"app/window/bridge", 4},
                                           {"app/window/style", 4},
                                           {"app/window/symbols", 4},
                                           {"app/window", 4}, //
                                           {"", 5}};

/// From this layer on, headers of Qt and libmpv may be included.
constexpr int toolkitLayer = 4;

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

TEST(IncludeArrows, PointToTheSameLayerOrDown) {
    for (const auto& [file, header, isOwn] : readIncludes()) {
        ASSERT_TRUE(layers.contains(folderOf(file))) << file << " is in a folder without a layer";
        if (!isOwn)
            continue;
        ASSERT_TRUE(layers.contains(folderOf(header))) << file << " includes " << header;
        EXPECT_LE(layers.at(folderOf(header)), layers.at(folderOf(file))) << file << " includes " << header;
    }
}

TEST(IncludeArrows, FormNoCycleBetweenFolders) {
    std::map<std::string, std::map<std::string, std::string>> graph; ///< from, to, an include that does so
    for (const auto& [file, header, isOwn] : readIncludes())
        if (isOwn && folderOf(file) != folderOf(header))
            graph[folderOf(file)].try_emplace(folderOf(header), file + " includes " + header);

    // A folder that includes no other, or that no other includes, is on no cycle.
    const auto removeOuterFolders = [&graph] {
        std::set<std::string> included;
        for (auto& [from, includes] : graph) {
            std::erase_if(includes, [&graph](const auto& to) { return !graph.contains(to.first); });
            for (const auto& [to, example] : includes)
                included.insert(to);
        }
        return std::erase_if(graph, [&](const auto& folder) {
                   return folder.second.empty() || !included.contains(folder.first);
               }) > 0;
    };
    while (removeOuterFolders()) {
    }
    for (const auto& [from, includes] : graph)
        for (const auto& [to, example] : includes)
            ADD_FAILURE() << "On a cycle: " << example;
}

TEST(IncludeArrows, KeepToolkitsOutOfTheLogic) {
    const std::regex toolkit(R"((Q[A-Z]\w*|Qt\w*/.*|mpv/.*|\w*file\.h))");
    for (const auto& [file, header, isOwn] : readIncludes())
        EXPECT_TRUE(isOwn || layers.at(folderOf(file)) >= toolkitLayer || !std::regex_match(header, toolkit))
            << file << " includes " << header;
}

TEST(SourceFiles, HaveAHeaderOfTheirNameOrCompleteOne) {
    const fs::path root = fs::path(ORVALEN_SOURCE_DIR) / "src";
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const fs::path file = entry.path();
        if (file.extension() != ".cpp" || file == root / "main.cpp")
            continue;
        std::string name = file.stem().string();
        const auto hasHeader = [&] { return fs::exists(file.parent_path() / (name + ".h")); };
        while (name.size() > 4 && !hasHeader()) // FileTagsMpeg.cpp completes FileTags.h
            name.pop_back();
        EXPECT_TRUE(hasHeader()) << file << ": no header has this name or the beginning of it";
    }
}

} // namespace
