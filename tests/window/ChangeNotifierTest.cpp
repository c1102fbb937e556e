#include "app/window/bridge/LibraryState.h"
#include "app/window/bridge/PreviewState.h"
#include "preview/PreviewPlayer.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"
#include "window/Notification.h"

#include <QElapsedTimer>
#include <QTest>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

TEST(ChangeNotifier, NotifiesTheViewsSixtyTimesASecondAtMost) {
    TestPlatform platform;
    ChangeNotifier notifier;
    LibraryState library(platform.view, notifier);
    const QSignalSpy told(&library, &StateProperties::changed);
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        platform.view.scanProgress.set(platform.view.scanProgress.get() + 1e-9);
        return told.count() >= 5;
    }));
    EXPECT_GE(clock.elapsed(), 4 * 15);
    waitForNotification(notifier);
    const auto atRest = told.count();
    waitForNotification(notifier);
    EXPECT_EQ(told.count(), atRest) << "notified although no field was written";
}

TEST(PreviewState, ReportsOnlyMovesThatCanBeSeen) {
    TestPlatform platform;
    ContentView& view = platform.view;
    view.showResultsPage.set(true);
    ChangeNotifier notifier;
    PreviewState preview(view, notifier);
    preview.setProperty("steps", 500);
    const QSignalSpy told(&preview, &StateProperties::changed);
    const auto after = [&](double progress) {
        view.playbackProgress.set(progress);
        waitForNotification(notifier);
        return told.count();
    };
    EXPECT_EQ(after(0.0009), 0) << "less than half a step";
    EXPECT_EQ(after(0.0021), 1);
    EXPECT_DOUBLE_EQ(preview.progress(), 1.0 / 500);
    EXPECT_EQ(after(0.0022), 1);
    view.showResultsPage.set(false);
    waitForNotification(notifier);
    const auto closed = told.count();
    EXPECT_EQ(after(0.5), closed);
    view.showResultsPage.set(true);
    waitForNotification(notifier);
    EXPECT_DOUBLE_EQ(preview.progress(), 0.5) << "right when the page opens again";
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
    waitForNotification(notifier);
    const auto atRest = told.count();
    playback.time = 80;
    QTest::qWait(250); // longer than the interval of the labels
    EXPECT_EQ(told.count(), atRest);
}

} // namespace
} // namespace orvalen::test
