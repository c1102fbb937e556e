#include "app/window/bridge/SearchState.h"

#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"
#include "window/Notification.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

class SearchStateTest : public testing::Test {
protected:
    SearchStateTest() {
        replaceIndex(view, buildIndex(std::vector{track("ABBA", "Dancing Queen"), track("ABBA", "SOS"),
                                                  track("Robyn", "Dancing On My Own")}));
        view.matchedTracks.set({row("Aba", "Dancing Qeen"), row("ABBA", "SOS", {track("ABBA", "SOS")}),
                                row("Nobody", "Nothing At All")});
        view.musicFolderURLs.set({{"/Music"}});
        view.showResultsPage.set(true);
        settle();
    }

    void settle() {
        for (int turn = 0; turn < 3; ++turn) {
            waitForNotification(notifier);
            platform.settle();
        }
    }

    const MatchedTrack& firstRow() const { return view.matchedTracks.get().front(); }

    TestPlatform platform;
    ContentView& view = platform.view;
    ChangeNotifier notifier;
    SearchState search{view, notifier};
};

TEST_F(SearchStateTest, SuggestsOnlyForRowsWithoutACandidate) {
    ASSERT_EQ(search.suggestionsOf(0), QStringList{"ABBA – Dancing Queen"});
    for (const int other : {-1, 1, 2, 3})
        EXPECT_EQ(search.suggestionsOf(other), QStringList()) << other;

    search.previewSuggestion(0, 0);
    EXPECT_TRUE(view.isPlaying.get());
    search.take(0, 1); // there is no second suggestion
    EXPECT_FALSE(firstRow().selectedTrack);
    search.take(0, 0);
    settle();
    ASSERT_TRUE(firstRow().selectedTrack);
    EXPECT_EQ(firstRow().selectedTrack->path, "/Music/ABBA - Dancing Queen.mp3");
    EXPECT_EQ(firstRow().selectedTrack->title, "Dancing Qeen") << "named after the row";
    EXPECT_EQ(search.suggestionsOf(0), QStringList());
}

TEST_F(SearchStateTest, AnswersTheLatestTextAndAttachesToItsRow) {
    EXPECT_EQ(search.begin(0), "Aba Dancing Qeen");
    search.look("dancing");
    search.look("own my danc");
    settle();
    EXPECT_EQ(search.answered(), "own my danc");
    ASSERT_FALSE(search.paths().isEmpty());
    EXPECT_EQ(search.paths().front(), "/Music/Robyn - Dancing On My Own.mp3");

    // The row is identified by its id, even if it moves.
    view.matchedTracks.update([](auto& rows) { std::swap(rows[0], rows[1]); });
    search.attach(0);
    settle();
    ASSERT_TRUE(view.matchedTracks.get()[1].selectedTrack);
    EXPECT_EQ(view.matchedTracks.get()[1].selectedTrack->path, "/Music/Robyn - Dancing On My Own.mp3");
    EXPECT_EQ(view.matchedTracks.get()[0].selectedTrack->title, "SOS");
}

TEST_F(SearchStateTest, AttachesNothingOnceItsRowIsGone) {
    search.begin(0);
    settle();
    ASSERT_FALSE(search.labels().isEmpty());
    view.matchedTracks.set({row("Aba", "Dancing Qeen")});
    search.attach(0);
    settle();
    EXPECT_FALSE(firstRow().selectedTrack);
    search.end();
    EXPECT_TRUE(search.labels().isEmpty());
}

} // namespace
} // namespace orvalen::test
