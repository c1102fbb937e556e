#include "matching/WantedList.h"

#include "app/ContentView.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <chrono>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
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
        {"duplicates stay", "a\na", {"a", "a"}},
        {"no break: the separator's neighbours", "a\u2027b\u202Ac", {"a\u2027b\u202Ac"}},
        {"no break: a letter that shares NEL's last byte", "a\u0105b", {"a\u0105b"}},
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
        {"brackets stay", "A (DJ) - B [Remix] 128", "A (DJ)", "B [Remix] 128"},
        {"NUL", "A\0 - B"s, "A\0"s, "B"},
    };
    for (const Case& c : cases) {
        const auto artistFirst = parseWantedLine(c.line, "artist-title");
        ASSERT_TRUE(artistFirst) << c.quirk;
        EXPECT_EQ(artistFirst->artist, c.artist) << c.quirk;
        EXPECT_EQ(artistFirst->title, c.title) << c.quirk;
        for (const char* format : {"title-artist", "Artist-Title", ""}) {
            const auto titleFirst = parseWantedLine(c.line, format);
            ASSERT_TRUE(titleFirst) << c.quirk;
            EXPECT_EQ(titleFirst->artist, c.title) << c.quirk;
            EXPECT_EQ(titleFirst->title, c.artist) << c.quirk;
        }
    }
}

TEST(WantedLine, OfAnotherFormIsRefused) {
    for (const char* line :
         {"", "Night Band", "Night Band-Last Train", "Night Band \u2013Last Train", "Night Band- Last Train",
          "Night Band - Last Train - Remix", "A \u2013 B \u2014 C", "- Title", "Artist -",
          "Artist \u2212 Minus", "A\u00A0-\u00A0No-break spaces"})
        EXPECT_FALSE(parseWantedLine(line, "artist-title")) << line;
}

TEST(WantedLine, OfTenMegabytesIsReadInLinearTime) {
    const auto start = std::chrono::steady_clock::now();
    const std::string half(5'000'000, '-');
    EXPECT_TRUE(parseWantedLine(half + " - " + half, "artist-title"));
    std::string blanks = "a";
    for (int i = 0; i < 500'000; ++i)
        blanks += " \u2013\t\n";
    EXPECT_EQ(wantedLines(blanks).size(), 500'000U);
    EXPECT_FALSE(parseWantedLine(blanks, "artist-title"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

class StartMatching : public testing::Test {
protected:
    StartMatching() { view.matchInput.set("Night Band - Last Train"); }
    void fillLibrary() {
        replaceIndex(view, buildIndex(std::vector{track("Night Band", "Last Train")}));
        world.settle();
    }

    TestPlatform world;
    ContentView& view = world.view;
};

TEST_F(StartMatching, RunsOnTheMatchQueue) {
    fillLibrary();
    startMatching(view);
    EXPECT_TRUE(view.isMatching.get());
    EXPECT_FALSE(view.showResultsPage.get());
    EXPECT_EQ(world.matchQueue.pending(), 1U);
    world.settle();
    EXPECT_FALSE(view.isMatching.get());
    ASSERT_EQ(view.matchedTracks.get().size(), 1U);
    EXPECT_TRUE(view.matchedTracks.get()[0].found);
}

TEST_F(StartMatching, DoesNothingWithoutALibraryOrAText) {
    startMatching(view);
    EXPECT_FALSE(view.isMatching.get());
    fillLibrary();
    view.matchInput.set("");
    startMatching(view);
    EXPECT_FALSE(view.isMatching.get());
    EXPECT_EQ(world.matchQueue.pending(), 0U);
}

TEST_F(StartMatching, BlankLinesGiveAnEmptyResultsPage) {
    fillLibrary();
    view.matchedTracks.set({row("Old", "Row")});
    view.matchInput.set("\n \n\n");
    startMatching(view);
    world.settle();
    EXPECT_TRUE(view.showResultsPage.get());
    EXPECT_FALSE(view.isMatching.get());
    EXPECT_TRUE(view.matchedTracks.get().empty());
}

TEST_F(StartMatching, MatchesTheTextOfADjepImport) {
    fillLibrary();
    view.inputMode.set(InputMode::djep);
    startMatching(view);
    world.settle();
    EXPECT_EQ(view.matchedTracks.get().size(), 1U);
}

TEST_F(StartMatching, LeavesAPlaylistAddressToItsImporter) {
    fillLibrary();
    view.inputMode.set(InputMode::spotify);
    view.spotifyURLInput.set("https://open.spotify.com/playlist/abc");
    startMatching(view);
    EXPECT_EQ(world.httpSession.pending(), 1U);
    EXPECT_EQ(world.matchQueue.pending(), 0U);
}

} // namespace
} // namespace orvalen::test
