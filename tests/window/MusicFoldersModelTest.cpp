#include "app/window/bridge/MusicFoldersModel.h"

#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <QAbstractItemModelTester>
#include <QStringList>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

QStringList shown(const MusicFoldersModel& model) {
    QStringList rows;
    for (int i = 0; i < model.rowCount(); ++i)
        rows.append(model.data(model.index(i), MusicFoldersModel::path).toString() + ":" +
                    model.data(model.index(i), MusicFoldersModel::countText).toString());
    return rows;
}

TEST(MusicFoldersModel, FollowsTheListAndTheCounts) {
    TestPlatform platform;
    ContentView& view = platform.view;
    MusicFoldersModel model(view);
    // The tester dies on a row that is inserted or removed otherwise than announced.
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
    EXPECT_EQ(after({}), QStringList());
}

TEST(MusicFoldersModel, HintsAtFoldersWhoseDriveIsNotConnected) {
    TestPlatform platform;
    MusicFoldersModel model(platform.view);
    platform.view.musicFolderURLs.set({{"/a"}, {"/media/stick"}});
    model.refresh();
    const auto hints = [&] {
        std::vector<bool> shown;
        for (int i = 0; i < model.rowCount(); ++i)
            shown.push_back(model.data(model.index(i), MusicFoldersModel::notConnected).toBool());
        return shown;
    };
    EXPECT_EQ(platform.driveWatch.watched, platform.view.musicFolderURLs.get());
    EXPECT_EQ(hints(), (std::vector{false, false}));
    platform.driveWatch.observer({{"/media/stick"}});
    EXPECT_EQ(hints(), (std::vector{false, true}));
    platform.driveWatch.observer({});
    EXPECT_EQ(hints(), (std::vector{false, false}));
}

} // namespace
} // namespace orvalen::test
