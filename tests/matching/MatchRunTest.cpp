#include "matching/MatchRun.h"

#include "app/state/ContentView.h"
#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MatchRun : public testing::Test {
protected:
    void library(const std::vector<Track>& tracks) {
        replaceIndex(view, buildIndex(tracks));
        test.settle();
    }
    const std::vector<MatchedTrack>& match(std::vector<std::string> lines) {
        matchLines(std::move(lines), view);
        test.settle();
        return view.matchedTracks.get();
    }

    TestPlatform test;
    ContentView& view = test.view;
};

TEST_F(MatchRun, ListsEqualTracksOnceInTheOrderOfTheWaysThatFindThem) {
    library({track("The Night Band", "Last Train Home", {}, "/m/loose.mp3"),
             track("Somebody", "Else", {}, "/m/Night Band - Last Train.m4a"),
             track("Night Band", "Last Train", {}, "/m/caf\u00E9.mp3"),
             track("Night Band", "Last Train", {}, "/m/cafe\u0301.mp3"),
             track("NIGHT BAND", "Last train!", 0, "/m/caf\u00E9.mp3"),
             track("Night Band", "First Train", {}, "/m/other.mp3")});
    match({"Night Band - Last Train"});
    EXPECT_EQ(test.console.lines()[0], "Matched Last Train - Night Band: [\"Last Train [BPM: nil]\", "
                                       "\"Last train! [BPM: 0]\", \"Else [BPM: nil]\", "
                                       "\"Last Train Home [BPM: nil]\"]");
    EXPECT_EQ(test.console.lines()[1],
              "Options for Last Train \u2013 Night Band: [\"/m/caf\u00E9.mp3\", \"/m/caf\u00E9.mp3\", "
              "\"/m/Night Band - Last Train.m4a\", \"/m/loose.mp3\"]");
}

TEST_F(MatchRun, SelectsByTheRememberedChoice) {
    struct Case {
        const char* rule;
        std::size_t options;
        std::string preferred; ///< empty: none
        int selected;          ///< -1: no selected track
    };
    const std::vector<Case> cases = {
        {"no choice: the first", 3, "", 0},
        {"no candidates", 0, "", -1},
        {"no candidates, yet a choice", 0, "/m/1.mp3", -1},
        {"the chosen one", 3, "/m/2.mp3", 2},
        {"a choice that is gone", 2, "/m/gone.mp3", -1},
        {"a choice that is gone, one candidate", 1, "/m/gone.mp3", 0},
    };
    for (const Case& c : cases) {
        std::vector<Track> tracks{track("Other", "Song")};
        for (std::size_t i = 0; i < c.options; ++i)
            tracks.push_back(track("Night", "Train", {}, "/m/" + std::to_string(i) + ".mp3"));
        library(tracks);
        test.database().replacePreferredMatches({});
        if (!c.preferred.empty())
            test.database().savePreferredMatch("night train", c.preferred);
        const auto& rows = match({"Night - Train"});
        ASSERT_EQ(rows.size(), 1U) << c.rule;
        EXPECT_EQ(rows[0].found, c.options > 0) << c.rule;
        EXPECT_FALSE(rows[0].include) << c.rule;
        ASSERT_EQ(rows[0].selectedTrack.has_value(), c.selected >= 0) << c.rule;
        if (c.selected >= 0) {
            EXPECT_EQ(*rows[0].selectedTrack, rows[0].options[static_cast<std::size_t>(c.selected)])
                << c.rule;
        }
    }
}

TEST_F(MatchRun, ComparesTheRememberedPathCanonically) {
    library({track("Night", "Train", {}, "/m/a.mp3"), track("Night", "Train", {}, "/m/caf\u00E9.mp3")});
    test.database().savePreferredMatch("night train", "/m/cafe\u0301.mp3");
    EXPECT_EQ(match({"Night - Train"})[0].selectedTrack->path, "/m/caf\u00E9.mp3");
}

TEST_F(MatchRun, TellsItsStepsInOrder) {
    library({track("Night Band", "Last Train", 128)});
    std::vector<std::string> steps;
    view.scanningFileName.observe([&] { steps.push_back(view.scanningFileName.get()); });
    view.matchProgress.observe([&] { steps.push_back(std::to_string(view.matchProgress.get())); });
    view.matchedTracks.observe([&] { steps.push_back("rows"); });
    view.showResultsPage.observe([&] { steps.push_back("page"); });
    view.isMatching.observe([&] { steps.push_back("done"); });
    view.isAutoSaving.observe([&] { steps.push_back("saved"); });
    view.matchInputFormat.set("title-artist");
    match({"Last Train - Night Band", "no dash here", "Nothing - Nobody"});
    EXPECT_THAT(steps, ElementsAre("Night Band \u2013 Last Train", "0.333333", "Nobody \u2013 Nothing",
                                   "1.000000", "0.000000", "rows", "page", "done", "saved"));
    EXPECT_EQ(view.scanningFileName.get(), "Nobody \u2013 Nothing");
    auto lines = test.console.lines();
    ASSERT_GE(lines.size(), 4U);
    lines.resize(4);
    EXPECT_THAT(lines, ElementsAre("Matched Last Train - Night Band: [\"Last Train [BPM: 128]\"]",
                                   "Options for Last Train \u2013 Night Band: "
                                   "[\"/Music/Night Band - Last Train.mp3\"]",
                                   "Matched Nothing - Nobody: []", "Options for Nothing \u2013 Nobody: []"));
}

TEST_F(MatchRun, WithoutAWantedLineOpensAnEmptyPage) {
    library({track("A", "B")});
    view.matchedTracks.set({row("Old", "Row")});
    EXPECT_THAT(match({"no dash", "One - Two - Three"}), IsEmpty());
    EXPECT_TRUE(view.showResultsPage.get());
    EXPECT_EQ(view.matchProgress.get(), 0);
}

TEST_F(MatchRun, WorksOnTheLibraryAndFormatOfItsStart) {
    library({track("Night", "Train")});
    matchLines({"Night - Train"}, view);
    view.matchInputFormat.set("title-artist");
    clearIndex(view);
    test.settle();
    ASSERT_EQ(view.matchedTracks.get().size(), 1U);
    EXPECT_TRUE(view.matchedTracks.get()[0].found);
    EXPECT_EQ(view.matchedTracks.get()[0].artist, "Night");
}

TEST_F(MatchRun, SeesAChoiceThatIsMadeBeforeItsLineIsReached) {
    library({track("Night", "Train", {}, "/m/1.mp3"), track("Night", "Train", {}, "/m/2.mp3")});
    matchLines({"Night - Train"}, view);
    test.database().savePreferredMatch("night train", "/m/2.mp3");
    test.settle();
    EXPECT_EQ(view.matchedTracks.get()[0].selectedTrack->path, "/m/2.mp3");
}

TEST_F(MatchRun, EachGivesItsRowsIdentitiesOfTheirOwn) {
    library({track("Night", "Train")});
    matchLines({"Night - Train", "Night - Train"}, view);
    matchLines({"Day - Train"}, view);
    test.matchQueue.runOne();
    test.mainQueue.run();
    ASSERT_EQ(view.matchedTracks.get().size(), 2U);
    EXPECT_FALSE(view.matchedTracks.get()[0].id == view.matchedTracks.get()[1].id);
    test.settle();
    EXPECT_EQ(view.matchedTracks.get().size(), 1U) << "the later run's rows replace the earlier's";
}

} // namespace
} // namespace orvalen::test
