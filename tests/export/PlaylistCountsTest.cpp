#include "export/PlaylistCounts.h"

#include "support/Builders.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

TEST(PlaylistCounts, SayWhatAnExportLacksAndRepeats) {
    const auto included = [](const char* title, const char* path) {
        return row("A", title, {track("A", title, {}, path)}, true);
    };
    std::vector<MatchedTrack> rows{included("1", "/1.mp3"), included("2", "/caf\u00E9.mp3"),
                                   row("A", "not included", {track("A", "T", {}, "/1.mp3")})};
    const auto caption = [&] { return playlistCaption(playlistCounts(rows)); };
    EXPECT_EQ(caption(), "");
    rows.push_back(included("3", "/cafe\u0301.mp3"));
    EXPECT_EQ(caption(), "3 files will be written; 1 file is written twice or more");
    rows.push_back(row("B", "missing", {}, true));
    EXPECT_EQ(caption(),
              "3 files will be written; 1 selected row has no file; 1 file is written twice or more");
    rows.push_back(row("B", "missing, not included"));
    EXPECT_EQ(missingList(rows), "B – missing\nB – missing, not included\n");
}

} // namespace
} // namespace orvalen::test
