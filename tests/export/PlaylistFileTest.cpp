#include "export/PlaylistFile.h"

#include "support/Builders.h"
#include "support/SmallDisk.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

MatchedTrack included(std::string path) {
    MatchedTrack result = row("A", "T", {track("A", "T")}, true);
    result.selectedTrack->path = std::move(path);
    return result;
}

MatchedTrack excluded(std::string path) {
    MatchedTrack result = included(std::move(path));
    result.include = false;
    return result;
}

MatchedTrack withoutSelection() {
    return row("A", "T", {}, true);
}

TEST(PlaylistFile, HoldsThePathsOfTheIncludedRows) {
    MatchedTrack notFound = included("/b.mp3");
    notFound.found = false;
    struct Case {
        const char* quirk;
        std::vector<MatchedTrack> rows;
        std::string bytes;
    };
    const Case cases[] = {
        {"other alphabets, in both forms",
         {included("/Müsik/Мумий Тролль – Владивосток.mp3"), included("/音楽/椎名林檎.m4a"),
          included("/Cafe\u0301.mp3"), included("/😀.wav"), included("/موسيقى/أغنية.mp3")},
         "/M\xC3\xBCsik/"
         "\xD0\x9C\xD1\x83\xD0\xBC\xD0\xB8\xD0\xB9 \xD0\xA2\xD1\x80\xD0\xBE\xD0\xBB\xD0\xBB\xD1\x8C "
         "\xE2\x80\x93 "
         "\xD0\x92\xD0\xBB\xD0\xB0\xD0\xB4\xD0\xB8\xD0\xB2\xD0\xBE\xD1\x81\xD1\x82\xD0\xBE\xD0\xBA.mp3\n"
         "/\xE9\x9F\xB3\xE6\xA5\xBD/\xE6\xA4\x8E\xE5\x90\x8D\xE6\x9E\x97\xE6\xAA\x8E.m4a\n"
         "/Cafe\xCC\x81.mp3\n"
         "/\xF0\x9F\x98\x80.wav\n"
         "/\xD9\x85\xD9\x88\xD8\xB3\xD9\x8A\xD9\x82\xD9\x89/\xD8\xA3\xD8\xBA\xD9\x86\xD9\x8A\xD8\xA9.mp3"},
        {"three rows",
         {included("/a.mp3"), included("/b.mp3"), included("/c.mp3")},
         "/a.mp3\n/b.mp3\n/c.mp3"},
        {"list order, not name order", {included("/b.mp3"), included("/a.mp3")}, "/b.mp3\n/a.mp3"},
        {"an excluded row between",
         {included("/a.mp3"), excluded("/b.mp3"), included("/c.mp3")},
         "/a.mp3\n/c.mp3"},
        {"a row without a selection", {withoutSelection(), included("/a.mp3"), withoutSelection()}, "/a.mp3"},
        {"one file twice", {included("/a.mp3"), included("/a.mp3")}, "/a.mp3\n/a.mp3"},
        {"a browsed file of a line that was not found", {notFound}, "/b.mp3"},
        {"nothing is rewritten",
         {included("/100% #1 & more \\ \"x\".mp3"), included("relative.mp3")},
         "/100% #1 & more \\ \"x\".mp3\nrelative.mp3"},
        {"an empty path is a line",
         {included("/a.mp3"), included(""), included("/b.mp3")},
         "/a.mp3\n\n/b.mp3"},
        {"included rows and nothing selected", {withoutSelection(), withoutSelection()}, ""},
        {"no rows", {}, ""},
    };
    for (const Case& c : cases) {
        const TemporaryFolder folder;
        const Location file{folder.path("плейлист 🎧.m3u")};
        ASSERT_TRUE(writePlaylistFile(playlistFileText(c.rows), file)) << c.quirk;
        EXPECT_EQ(folder.read("плейлист 🎧.m3u"), c.bytes) << c.quirk;
    }
}

std::vector<std::string> namesIn(const TemporaryFolder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        names.push_back(entry.path().filename().string());
    return names;
}

TEST(PlaylistFile, ReplacesTheOldOneAndLeavesNothingBeside) {
    const TemporaryFolder folder;
    const Location file{folder.write("list.m3u", "/a much longer old playlist.mp3\n/and more.mp3")};
    ASSERT_TRUE(writePlaylistFile("/new.mp3", file));
    EXPECT_EQ(folder.read("list.m3u"), "/new.mp3");
    EXPECT_EQ(namesIn(folder), std::vector<std::string>{"list.m3u"});
}

TEST(PlaylistFile, TellsWhyItCouldNotBeWritten) {
    const TemporaryFolder folder;
    folder.write("folder/inside.mp3", "kept");
    folder.write("file");
    struct Case {
        const char* quirk;
        std::string path;
        const char* description;
    };
    const Case cases[] = {
        {"over a folder", folder.path("folder"), "Is a directory"},
        {"a missing folder", folder.path("gone/list.m3u"), "No such file or directory"},
        {"below a file", folder.path("file/list.m3u"), "Not a directory"},
        {"a name longer than the system takes", folder.path(std::string(300, 'n')), "File name too long"},
        {"a path longer than the system takes", folder.path(std::string(5000, 'n') + "/list.m3u"),
         "File name too long"},
        {"a full disk", "/dev/full", "No space left on device"},
    };
    for (const Case& c : cases) {
        const auto written = writePlaylistFile("/new.mp3", Location{c.path});
        ASSERT_FALSE(written) << c.quirk;
        EXPECT_EQ(written.error().description, c.description) << c.quirk;
    }
    EXPECT_EQ(folder.read("folder/inside.mp3"), "kept");
    EXPECT_EQ(namesIn(folder).size(), 2U) << "a temporary file was left behind";
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full")) << "the device was replaced by a file";
}

TEST(PlaylistFile, LeavesTheOldOneUntouchedWhenTheDiskFillsUpMidway) {
    const TemporaryFolder folder;
    const Location file{folder.write("list.m3u", "/old.mp3")};
    const std::string text(20'000, 'x');
    {
        const SmallDisk disk(8192);
        EXPECT_FALSE(writePlaylistFile(text, file));
    }
    EXPECT_EQ(folder.read("list.m3u"), "/old.mp3");
    EXPECT_EQ(namesIn(folder), std::vector<std::string>{"list.m3u"});
    EXPECT_TRUE(writePlaylistFile(text, file)) << "the same bytes fit once there is room";
}

} // namespace
} // namespace orvalen::test
