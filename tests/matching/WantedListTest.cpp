#include "matching/WantedList.h"

#include "app/state/ContentView.h"
#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using namespace std::string_literals;

TEST(WantedLines, BreakAtEveryLineBreakAndAreTrimmed) {
    struct Case {
        const char* quirk;
        std::string text;
        std::vector<std::string> lines;
    };
    const std::vector<Case> cases = {
        {"nothing", "", {}},
        {"line feeds", "a\nb", {"a", "b"}},
        {"CR LF is one break", "a\r\nb\r\n", {"a", "b"}},
        {"CR alone", "a\rb", {"a", "b"}},
        {"vertical tab and form feed", "a\vb\fc", {"a", "b", "c"}},
        {"next line", "a\u0085b", {"a", "b"}},
        {"line and paragraph separator", "a\u2028b\u2029c", {"a", "b", "c"}},
        {"blank lines disappear", "\n\n \t \n\u00A0\n", {}},
        {"Unicode blanks are trimmed", "\u3000\u00A0 a b \u2009\t", {"a b"}},
        {"no break: the separator's neighbours", "a\u2027b\u202Ac", {"a\u2027b\u202Ac"}},
        {"NUL is a character like others", "a\0b\nc"s, {"a\0b"s, "c"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(wantedLines(c.text), c.lines) << c.quirk;
}

TEST(WantedLine, IsSplitAtItsOneSpacedDash) {
    struct Case {
        const char* quirk;
        std::string line;
        std::string artist;
        std::string title;
    };
    const std::vector<Case> cases = {
        {"hyphen", "Night Band - Last Train", "Night Band", "Last Train"},
        {"en dash", "Night Band \u2013 Last Train", "Night Band", "Last Train"},
        {"em dash", "Night Band \u2014 Last Train", "Night Band", "Last Train"},
        {"spare blanks", "Night Band \u00A0 -  Last Train \t", "Night Band", "Last Train"},
        {"an unspaced dash stays", "A-ha \u2013 Take-On\u2013Me", "A-ha", "Take-On-Me"},
        {"a dash as a half", "X -  -", "X", "-"},
        {"separators do not overlap", "A - - B", "A", "- B"},
    };
    for (const Case& c : cases) {
        const auto artistFirst = parseWantedLine(c.line, "artist-title");
        ASSERT_TRUE(artistFirst) << c.quirk;
        EXPECT_EQ(artistFirst->artist, c.artist) << c.quirk;
        EXPECT_EQ(artistFirst->title, c.title) << c.quirk;
        const auto titleFirst = parseWantedLine(c.line, "title-artist");
        ASSERT_TRUE(titleFirst) << c.quirk;
        EXPECT_EQ(titleFirst->artist, c.title) << c.quirk;
        EXPECT_EQ(titleFirst->title, c.artist) << c.quirk;
    }
}

TEST(WantedLine, OfAnotherFormIsRefused) {
    for (const char* line :
         {"", "Night Band", "Night Band-Last Train", "Night Band \u2013Last Train", "A \u2013 B \u2014 C",
          "- Title", "Artist -", "Artist \u2212 Minus", "A\u00A0-\u00A0No-break spaces"})
        EXPECT_FALSE(parseWantedLine(line, "artist-title")) << line;
}

class StartMatching : public testing::Test {
protected:
    StartMatching() { view.matchInput.set("Night Band - Last Train"); }
    TestPlatform test;
    ContentView& view = test.view;
};

TEST_F(StartMatching, RunsOnTheMatchQueueWithALibraryAndATextAndLeavesAnAddressToItsImporter) {
    startMatching(view);
    EXPECT_FALSE(view.isMatching.get()) << "no library";
    replaceIndex(view, buildIndex(std::vector{track("Night Band", "Last Train")}));
    test.settle();
    view.matchInput.set("");
    startMatching(view);
    EXPECT_FALSE(view.isMatching.get()) << "no text";
    EXPECT_EQ(test.matchQueue.pending(), 0U);

    view.matchInput.set("Night Band - Last Train");
    startMatching(view);
    EXPECT_TRUE(view.isMatching.get());
    EXPECT_EQ(test.matchQueue.pending(), 1U);
    test.settle();
    EXPECT_FALSE(view.isMatching.get());
    EXPECT_EQ(view.matchedTracks.get().size(), 1U);

    view.inputMode.set(InputMode::spotify);
    view.spotifyURLInput.set("https://open.spotify.com/playlist/abc");
    startMatching(view);
    EXPECT_EQ(test.httpSession.pending(), 1U);
    EXPECT_EQ(test.matchQueue.pending(), 0U);
}

} // namespace
} // namespace orvalen::test
