#include "app/window/bridge/LibraryState.h"
#include "app/window/bridge/PreviewState.h"
#include "preview/PreviewPlayer.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

TEST(ChangeNotifier, TellsTheViewsSixtyTimesASecondAtMost) {
    TestPlatform platform;
    ChangeNotifier notifier;
    LibraryState library(platform.view, notifier);
    const QSignalSpy told(&library, &StateProperties::changed);

    QElapsedTimer clock;
    clock.start();
    int writes = 0;
    while (clock.elapsed() < 300) {
        platform.view.scanProgress.set(++writes * 1e-9);
        QCoreApplication::processEvents();
    }
    EXPECT_GT(writes, 1000);
    EXPECT_GE(told.count(), 5);
    EXPECT_LE(told.count(), 20);

    platform.view.scanProgress.set(0.5);
    while (clock.elapsed() < 400)
        QCoreApplication::processEvents();
    EXPECT_EQ(library.scanProgress(), 0.5);
    const auto atRest = told.count();
    while (clock.elapsed() < 450)
        QCoreApplication::processEvents();
    EXPECT_EQ(told.count(), atRest) << "nothing was written, nothing is told";
}

TEST(PreviewState, TellsOnlyWhatCanBeSeenToMove) {
    TestPlatform platform;
    platform.view.showResultsPage.set(true);
    ChangeNotifier notifier;
    PreviewState preview(platform.view, notifier);
    preview.setProperty("steps", 500);
    const QSignalSpy told(&preview, &StateProperties::changed);
    const auto progress = [&](double value) {
        platform.view.playbackProgress.set(value);
        QTest::qWait(30);
        return told.count();
    };
    EXPECT_EQ(progress(0.0009), 0) << "less than half a step";
    EXPECT_EQ(progress(0.0021), 1);
    EXPECT_DOUBLE_EQ(preview.progress(), 1.0 / 500);
    EXPECT_EQ(progress(0.0022), 1);
    platform.view.showResultsPage.set(false);
    QTest::qWait(30);
    const auto closed = told.count();
    EXPECT_EQ(progress(0.5), closed) << "nobody can see it";
    platform.view.showResultsPage.set(true);
    QTest::qWait(30);
    EXPECT_DOUBLE_EQ(preview.progress(), 0.5) << "and it is right when the page opens again";
}

TEST(PreviewState, FollowsATrackThatPlaysAfterAnotherCouldNotBeOpened) {
    TestPlatform platform;
    ContentView& view = platform.view;
    view.showResultsPage.set(true);
    view.musicFolderURLs.set({Location{"/Music"}});
    ChangeNotifier notifier;
    PreviewState preview(view, notifier);
    const Track played = track("A", "T", {}, "/Music/1.mp3");
    playPreview(view, played);
    platform.audioPlayers.unplayable = {"/Music/2.mp3"};
    playPreview(view, track("A", "U", {}, "/Music/2.mp3"));
    togglePreview(view, played);
    ASSERT_FALSE(view.playbackTimer.get());

    const QSignalSpy told(&preview, &StateProperties::changed);
    FakePlayback& playback = *platform.audioPlayers.playbacks.front();
    for (const auto& [time, label] : {std::pair(61.5, "1:01"), std::pair(62.5, "1:02")}) {
        playback.time = time;
        const auto before = told.count();
        EXPECT_TRUE(QTest::qWaitFor([&] { return told.count() > before && preview.position() == label; }));
        EXPECT_NEAR(preview.progress(), time / playback.length, 0.001);
    }
    togglePreview(view, played); // pauses
    QTest::qWait(50);
    const auto atRest = told.count();
    playback.time = 80;
    QTest::qWait(500);
    EXPECT_EQ(told.count(), atRest);
}

} // namespace
} // namespace orvalen::test
