#include "matching/ReviewDecisions.h"

#include "core/Keys.h"
#include "library/PlaylistDatabaseManager.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

using enum RowDecision;
using Decisions = std::vector<RowDecision>;

class ReviewDecisionsTest : public testing::Test {
protected:
    ReviewDecisionsTest() {
        view.matchedTracks.set({row("A", "none"), row("A", "one", {one}), row("A", "two", {one, two})});
    }
    std::optional<std::string> preferred() { return test.database().preferredPath(key); }
    const MatchedTrack& shown(std::size_t row) { return view.matchedTracks.get().at(row); }

    const Track one = track("A", "one", {}, "/1.mp3");
    const Track two = track("A", "two", {}, "/2.mp3");
    const std::string key = libraryKey("A", "two");
    TestPlatform test;
    ContentView& view = test.view;
    ReviewDecisions decisions{view};
};

TEST_F(ReviewDecisionsTest, AreToldByWhatTheUserDid) {
    EXPECT_EQ(decisions.decisions(), (Decisions{noFile, proposed, undecided}));
    decisions.choose(2, "/1.mp3");
    EXPECT_EQ(decisions.decisions()[2], chosen) << "the first candidate, which the run had proposed";
    decisions.include(1, true);
    decisions.includeAll(true);
    EXPECT_EQ(decisions.decisions(), (Decisions{noFile, included, included})) << "no file, included or not";
    decisions.includeAll(false);
    view.matchedTracks.update([&](auto& rows) {
        rows[0].options.push_back(two);
        rows[0].selectedTrack = two;
    });
    EXPECT_EQ(decisions.decisions(), (Decisions{chosen, proposed, chosen}))
        << "a file that the user attached";
    ReviewDecisions later(view);
    EXPECT_EQ(later.decisions()[2], chosen) << "by the stored preferred match";
    view.matchedTracks.update([&](auto& rows) { rows[2].selectedTrack = two; });
    EXPECT_EQ(later.decisions()[2], chosen) << "a run takes the first candidate or the stored one";
    test.database().savePreferredMatch(key, "/2.mp3");
    view.matchedTracks.set({row("A", "two", {one, two})});
    EXPECT_EQ(later.decisions()[0], undecided) << "the stored file is another one";
    test.database().removePreferredMatch(key);
    view.earlierChoices.set({{key, "/1.mp3"}});
    EXPECT_EQ(ReviewDecisions(view).decisions()[0], chosen) << "in an earlier run";
}

TEST_F(ReviewDecisionsTest, UndoesChoicesWithTheirPreferredMatches) {
    decisions.choose(2, "/2.mp3");
    decisions.choose(2, "/1.mp3");
    EXPECT_EQ(decisions.undo(), 2U);
    EXPECT_EQ(shown(2).selectedTrack->path, "/2.mp3");
    EXPECT_EQ(preferred(), "/2.mp3");
    EXPECT_EQ(decisions.undo(), 2U);
    EXPECT_EQ(shown(2).selectedTrack->path, "/1.mp3");
    EXPECT_EQ(preferred(), std::nullopt);
    EXPECT_TRUE(test.database().allPreferredMatches().empty());
    EXPECT_EQ(decisions.decisions()[2], undecided);
    EXPECT_EQ(decisions.undo(), std::nullopt);
}

TEST_F(ReviewDecisionsTest, BringsAnEarlierChoiceBackOnUndo) {
    view.earlierChoices.set({{key, "/2.mp3"}});
    decisions.choose(2, "/2.mp3");
    EXPECT_TRUE(view.earlierChoices.get().empty());
    decisions.undo();
    EXPECT_EQ(view.earlierChoices.get(), (PreferredMatches{{key, "/2.mp3"}}));
    EXPECT_NE(test.support().read("Orvalen/earlier_choices.json").find("/2.mp3"), std::string::npos);
}

TEST_F(ReviewDecisionsTest, UndoesTicksStepByStep) {
    for (int i = 0; i < 10; ++i)
        decisions.include(1, i % 2 == 0);
    decisions.includeAll(true);
    decisions.includeAll(false);
    decisions.undo();
    EXPECT_TRUE(shown(0).include && shown(1).include && shown(2).include);
    decisions.undo();
    for (int i = 9; i >= 0; --i) {
        EXPECT_EQ(shown(1).include, i % 2 == 0) << i;
        EXPECT_FALSE(shown(0).include);
        EXPECT_EQ(decisions.undo(), 1U);
    }
    decisions.include(1, true);
    view.matchedTracks.set({row("B", "new")});
    EXPECT_EQ(decisions.undo(), std::nullopt) << "another list";
    EXPECT_FALSE(shown(0).include);
}

} // namespace
} // namespace orvalen::test
