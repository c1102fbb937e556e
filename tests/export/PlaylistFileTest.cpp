#include "export/PlaylistFile.h"

#include "support/Builders.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

MatchedTrack rowOf(std::string path, bool include = true) {
    MatchedTrack result = row("A", "T", {track("A", "T")}, include);
    result.selectedTrack->path = std::move(path);
    return result;
}

TEST(PlaylistFile, HoldsThePathsOfTheIncludedRows) {
    const MatchedTrack withoutSelection = row("A", "T", {}, true);
    MatchedTrack notFound = rowOf("/b.mp3");
    notFound.found = false;
    struct Case {
        const char* quirk;
        std::vector<MatchedTrack> rows;
        std::string bytes;
    };
    const Case cases[] = {
        {"other alphabets, accents in both forms",
         {rowOf("/Müsik/Владивосток.mp3"), rowOf("/音楽/😀.m4a"), rowOf("/Cafe\u0301.mp3")},
         "/M\xC3\xBCsik/"
         "\xD0\x92\xD0\xBB\xD0\xB0\xD0\xB4\xD0\xB8\xD0\xB2\xD0\xBE\xD1\x81\xD1\x82\xD0\xBE\xD0\xBA.mp3\n"
         "/\xE9\x9F\xB3\xE6\xA5\xBD/\xF0\x9F\x98\x80.m4a\n/Cafe\xCC\x81.mp3"},
        {"list order, not name order", {rowOf("/b.mp3"), rowOf("/a.mp3")}, "/b.mp3\n/a.mp3"},
        {"an excluded row between",
         {rowOf("/a.mp3"), rowOf("/b.mp3", false), rowOf("/c.mp3")},
         "/a.mp3\n/c.mp3"},
        {"a row without a selection", {withoutSelection, rowOf("/a.mp3"), withoutSelection}, "/a.mp3"},
        {"one file twice", {rowOf("/a.mp3"), rowOf("/a.mp3")}, "/a.mp3\n/a.mp3"},
        {"a browsed file of a line that was not found", {notFound}, "/b.mp3"},
        {"nothing is rewritten", {rowOf("/100% #1 \\ \"x\".mp3"), rowOf("")}, "/100% #1 \\ \"x\".mp3\n"},
        {"no rows", {}, ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(playlistFileText(c.rows), c.bytes) << c.quirk;
}

/// A kill or a full disk in the middle must not cost the old playlist.
TEST(PlaylistFile, TakesTheOldOnesPlaceInOneStep) {
    const TemporaryFolder folder;
    const Location file{folder.write("плейлист 🎧.m3u", "/a longer old playlist.mp3")};
    std::filesystem::create_hard_link(file.path, folder.path("as it was"));
    ASSERT_TRUE(writePlaylistFile("/new.mp3", file));
    EXPECT_EQ(folder.read("плейлист 🎧.m3u"), "/new.mp3");
    EXPECT_EQ(folder.read("as it was"), "/a longer old playlist.mp3");
}

} // namespace
} // namespace orvalen::test
