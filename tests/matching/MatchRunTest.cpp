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

TEST_F(MatchRun, SelectsByTheChoiceThatIsRememberedWhenTheLineIsReached) {
    using Path = std::optional<std::string>;
    const struct {
        const char* rule;
        std::vector<std::string> options;
        Path preferred;
        Path selected;
    } cases[] = {
        {"no choice: the first", {"/1", "/2", "/3"}, {}, "/1"},
        {"no candidates", {}, {}, {}},
        {"no candidates, yet a choice", {}, "/1", {}},
        {"the chosen one", {"/1", "/2", "/3"}, "/3", "/3"},
        {"the chosen one with its accent apart", {"/1", "/caf\u00E9"}, "/cafe\u0301", "/caf\u00E9"},
        {"a choice that is gone", {"/1", "/2"}, "/gone", {}},
        {"a choice that is gone, one candidate", {"/1"}, "/gone", "/1"},
    };
    for (const auto& c : cases) {
        std::vector<Track> tracks{track("Other", "Song")};
        for (const std::string& path : c.options)
            tracks.push_back(track("Night", "Train", {}, path));
        library(tracks);
        test.database().replacePreferredMatches({});
        matchLines({"Night - Train"}, view);
        if (c.preferred)
            test.database().savePreferredMatch("night train", *c.preferred);
        test.settle();
        const MatchedTrack& row = view.matchedTracks.get().at(0);
        EXPECT_EQ(row.found, !c.options.empty()) << c.rule;
        EXPECT_FALSE(row.include) << c.rule;
        EXPECT_EQ(row.selectedTrack ? Path(row.selectedTrack->path) : std::nullopt, c.selected) << c.rule;
    }
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
