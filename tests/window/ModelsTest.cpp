#include "app/window/bridge/MatchedTracksModel.h"

#include "app/window/bridge/MusicFoldersModel.h"
#include "app/window/bridge/TextDirection.h"
#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"
#include "matching/MatchReview.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QStringList>
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

    /// Returns the rows that were reported as changed.
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
    EXPECT_EQ(model.data(model.index(5), MatchedTracksModel::header), "Artist – Title 5 (7 BPM)");
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

/// Returns the path and the count of each folder, and whether its drive is disconnected.
QStringList shown(const MusicFoldersModel& model) {
    QStringList rows;
    for (int i = 0; i < model.rowCount(); ++i) {
        const QModelIndex row = model.index(i);
        rows.append(model.data(row, MusicFoldersModel::path).toString() + ":" +
                    model.data(row, MusicFoldersModel::countText).toString() +
                    (model.data(row, MusicFoldersModel::notConnected).toBool() ? " away" : ""));
    }
    return rows;
}

TEST(MusicFoldersModel, FollowsTheListTheCountsAndTheDrives) {
    TestPlatform platform;
    ContentView& view = platform.view;
    MusicFoldersModel model(view);
    // The tester aborts if rows change without the right signals.
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto after = [&](std::vector<Location> folders) {
        view.musicFolderURLs.set(std::move(folders));
        model.refresh();
        return shown(model);
    };
    EXPECT_EQ(after({{"/a"}, {"/b"}, {"/c"}}), (QStringList{"/a:", "/b:", "/c:"}));
    replaceIndex(view,
                 buildIndex(std::vector{track("x", "y", {}, "/a/1.mp3"), track("x", "z", {}, "/ab/2.mp3")}));
    EXPECT_EQ(after({{"/a"}, {"/c"}}), (QStringList{"/a:2 tracks", "/c:"}));
    EXPECT_EQ(after({{"/ab"}, {"/a"}, {"/c"}, {"/d"}}),
              (QStringList{"/ab:1 track", "/a:2 tracks", "/c:", "/d:"}));
    clearIndex(view);
    EXPECT_EQ(after({{"/d"}, {"/a"}, {"/a"}}), (QStringList{"/d:", "/a:", "/a:"}));
    EXPECT_EQ(platform.driveWatch.watched, view.musicFolderURLs.get());
    platform.driveWatch.observer({{"/d"}});
    EXPECT_EQ(shown(model), (QStringList{"/d: away", "/a:", "/a:"}));
    platform.driveWatch.observer({});
    EXPECT_EQ(shown(model), (QStringList{"/d:", "/a:", "/a:"}));
    EXPECT_EQ(after({}), QStringList());
}

TEST(TextDirection, IsolatesRightToLeftNames) {
    for (const auto& [text, expected] : {
             std::pair{u"ABBA – SOS (120 BPM)", u"ABBA – SOS (120 BPM)"},
             {u"عمرو – نور (128 BPM)", u"\u200e\u2068عمرو – نور\u2069 (128 BPM)"},
             {u"שלום", u"\u200e\u2068שלום\u2069"},
         })
        EXPECT_EQ(directedSong(QString::fromUtf16(text)), QString::fromUtf16(expected));
    for (const auto& [text, expected] : {
             std::pair{u"File: /Music/a.mp3", u"File: /Music/a.mp3"},
             {u"File: /M/عمرو/نور.mp3", u"\u200eFile: /\u2068M\u2069/\u2068عمرو\u2069/\u2068نور.mp3\u2069"},
         })
        EXPECT_EQ(directedPath(QString::fromUtf16(text)), QString::fromUtf16(expected));
}

} // namespace
} // namespace orvalen::test
