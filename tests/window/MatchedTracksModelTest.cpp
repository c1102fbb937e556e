#include "app/window/bridge/MatchedTracksModel.h"

#include "matching/MatchReview.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

class MatchedTracksModelTest : public testing::Test {
protected:
    MatchedTracksModelTest() {
        std::vector<MatchedTrack> rows;
        for (int i = 0; i < 6; ++i)
            rows.push_back(row("Artist", "Title " + std::to_string(i),
                               {track("Artist", "Title", 100 + i, "/Music/" + std::to_string(i) + ".mp3"),
                                track("Artist", "Title", {}, "/Music/other" + std::to_string(i) + ".mp3")}));
        view.matchedTracks.set(std::move(rows));
        model.refresh();
        QObject::connect(&model, &QAbstractItemModel::dataChanged,
                         [this](const QModelIndex& first, const QModelIndex& last) {
                             for (int i = first.row(); i <= last.row(); ++i)
                                 changed.push_back(i);
                         });
    }

    /// The rows that the views are told of after the change.
    std::vector<int> after(const std::function<void()>& change) {
        changed.clear();
        change();
        EXPECT_FALSE(model.refresh()) << "a reset";
        return changed;
    }

    TestPlatform platform;
    ContentView& view = platform.view;
    ReviewDecisions decisions{view};
    MatchedTracksModel model{view, decisions};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    std::vector<int> changed;
};

TEST_F(MatchedTracksModelTest, TellsExactlyTheRowsThatChanged) {
    using Rows = std::vector<int>;
    EXPECT_EQ(after([] {}), Rows{});
    EXPECT_EQ(after([&] { setInclude(view, 2, true); }), Rows{2});
    EXPECT_EQ(after([&] { chooseOption(view, 3, "/Music/other3.mp3"); }), Rows{3});
    EXPECT_EQ(after([&] { setIncludeForAll(view, true); }), (Rows{0, 1, 3, 4, 5}));
    EXPECT_EQ(after([&] { view.matchedTracks.update([](auto& rows) { rows[5].selectedTrack->bpm = 7; }); }),
              Rows{5});
    EXPECT_EQ(after([&] {
                  view.matchedTracks.update([](auto& rows) { rows[0].options.push_back(track("x", "y")); });
              }),
              Rows{0});
    EXPECT_EQ(after([&] { view.selectedTrack.set(track("x", "y", {}, "/Music/1.mp3")); }), Rows{1});
    EXPECT_EQ(after([&] { view.isPlaying.set(true); }), Rows{1});
    EXPECT_EQ(after([&] { view.selectedTrack.set(track("x", "y", {}, "/Music/4.mp3")); }), (Rows{1, 4}));
}

TEST_F(MatchedTracksModelTest, BecomesAnotherListOnlyWhenItIsOne) {
    std::vector<MatchedTrack> same = view.matchedTracks.get();
    view.matchedTracks.set(same);
    EXPECT_FALSE(model.refresh());
    same.pop_back();
    view.matchedTracks.set(same);
    EXPECT_TRUE(model.refresh());
    EXPECT_EQ(model.rowCount(), 5);
    same[0].id = UUID::random();
    view.matchedTracks.set(same);
    EXPECT_TRUE(model.refresh());
    view.matchedTracks.set({});
    EXPECT_EQ(model.data(model.index(3), MatchedTracksModel::label), QVariant())
        << "asked before it was told";
    EXPECT_TRUE(model.refresh());
    EXPECT_EQ(model.rowCount(), 0);
}

} // namespace
} // namespace orvalen::test
