#include "tidy/LineCheck.h"

#include "core/LibraryIndexBuilder.h"
#include "support/Builders.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

TEST(LineCheck, NamesEachLineThatIsLeftOut) {
    const std::string text =
        "ABBA - Waterloo\r\n\n  Ceremony:\nA \u2013 B \u2014 C\nRobyn\u00A0- Call\n\u3000Air \u2013 La";
    const LineCheck check = checkLines(text);
    EXPECT_EQ(check.lineCount, 5U);
    EXPECT_EQ(check.readCount(), 2U);
    ASSERT_EQ(check.leftOut.size(), 3U);
    EXPECT_EQ(check.leftOut[0].reason, LeftOutReason::noDash);
    EXPECT_EQ(check.leftOut[1].reason, LeftOutReason::severalDashes);
    EXPECT_EQ(check.leftOut[2].reason, LeftOutReason::unusualBlank);
    for (const LeftOutLine& line : check.leftOut)
        EXPECT_EQ(text.substr(line.offset, line.text.size()), line.text);
}

TEST(LineCheck, CountsInWords) {
    EXPECT_EQ(checkCaption(checkLines("")), "");
    EXPECT_EQ(checkCaption(checkLines(" \n\t")), "");
    EXPECT_EQ(checkCaption(checkLines("A - B")), "1 line: 1 is read, 0 are left out");
    EXPECT_EQ(checkCaption(checkLines("A - B\nC\nD - E")), "3 lines: 2 are read, 1 is left out");
}

class FormatCount : public testing::Test {
protected:
    FormatCounts count(const std::vector<std::string>& lines) const {
        return countFormats(catalog, lines, stop).value();
    }

    LibraryCatalog catalog{buildIndex(std::vector{track("ABBA", "Waterloo"), track("ABBA", "Fernando"),
                                                  track("Robyn", "Call"), track("Air", "La")})};
    std::atomic<bool> stop = false;
};

TEST_F(FormatCount, HintsAtAFormatThatFindsClearlyMore) {
    const FormatCounts counts =
        count({"Waterloo - ABBA", "Fernando - ABBA", "Call - Robyn", "Air - La", "none"});
    EXPECT_EQ(counts.artistFirst, 1U);
    EXPECT_EQ(counts.titleFirst, 3U);
    EXPECT_EQ(formatHint(counts, "artist-title"), "");
    EXPECT_EQ(formatHint({12, 140}, "artist-title"),
              "as Title \u2013 Artist, 140 lines would be found; as Artist \u2013 Title, 12");
    EXPECT_EQ(formatHint({12, 140}, "title-artist"), "");
    EXPECT_EQ(formatHint({9, 2}, "title-artist"),
              "as Artist \u2013 Title, 9 lines would be found; as Title \u2013 Artist, 2");
    EXPECT_EQ(formatHint({100, 120}, "artist-title"), "");
}

TEST_F(FormatCount, StopsWhenAsked) {
    stop = true;
    EXPECT_FALSE(countFormats(catalog, {"ABBA - Waterloo"}, stop));
}

} // namespace
} // namespace orvalen::test
