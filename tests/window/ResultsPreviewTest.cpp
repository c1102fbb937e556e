#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"
#include "preview/PreviewPlayer.h"
#include "window/ResultsPage.h"

#include <QTest>

namespace orvalen::test {
namespace {

TEST_F(ResultsPage, PlaysACandidateWithoutChoosingIt) {
    window.click(window.inRow(several, "Choose match"));
    window.expectShown("Choose match", QAccessible::List);
    window.key(Qt::Key_Down);
    window.key(Qt::Key_P);
    EXPECT_EQ(view.selectedTrack.get()->path, "/Music/b.mp3");
    EXPECT_TRUE(view.isPlaying.get());
    window.key(Qt::Key_P);
    EXPECT_FALSE(view.isPlaying.get());
    window.key(Qt::Key_Escape);
    window.expectGone("Choose match", QAccessible::List);
    EXPECT_EQ(rows()[0].selectedTrack->path, "/Music/a.mp3");
    window.key(Qt::Key_P);
    EXPECT_EQ(view.selectedTrack.get()->path, "/Music/a.mp3") << "the row's own file";
}

TEST_F(ResultsPage, PlaysAFoundTrackWithoutAttachingIt) {
    replaceIndex(view, buildIndex(std::vector{track("Nobody", "Nothing", {}, "/Music/e.mp3"),
                                              track("Nobody", "Nothing Else", {}, "/Music/f.mp3")}));
    window.click(window.inRow(none, "Find in library"));
    EXPECT_TRUE(window.waitFor([&] { return window.shows("Nobody – Nothing Else"); }));
    window.key(Qt::Key_P);
    EXPECT_FALSE(view.selectedTrack.get()) << "typed into the field";
    window.key(Qt::Key_A, Qt::ControlModifier);
    window.type("nothing");
    EXPECT_TRUE(window.waitFor([&] { return window.shows("Nobody – Nothing Else"); }));
    window.key(Qt::Key_Down);
    window.key(Qt::Key_P);
    ASSERT_TRUE(view.selectedTrack.get());
    EXPECT_EQ(view.selectedTrack.get()->path, "/Music/f.mp3");
    EXPECT_FALSE(rows()[2].selectedTrack);
    window.key(Qt::Key_Return);
    window.settle();
    EXPECT_EQ(rows()[2].selectedTrack.value().path, "/Music/f.mp3");
}

TEST_F(ResultsPage, PlaysPausesAndSeeks) {
    window.click(window.inRow(single, "Play"));
    ASSERT_EQ(window.platform.audioPlayers.playbacks.size(), 1U);
    EXPECT_TRUE(window.shows("Now Playing: /Music/d.mp3"));
    lastPlayback().time = 61;
    lastPlayback().length = 200;
    const auto tick = [&] {
        window.platform.mainQueue.advance(std::chrono::milliseconds(20));
        window.settle();
    };
    tick();
    EXPECT_TRUE(window.shows("1:01"));
    EXPECT_TRUE(window.shows("3:20"));

    const auto slider = window.control("Playback position", QAccessible::Slider);
    const QRectF place = slider.sceneRect();
    const auto at = [&](double share) {
        return QPointF(place.left() + place.width() * share, place.center().y()).toPoint();
    };
    QTest::mousePress(window.window(), Qt::LeftButton, Qt::NoModifier, at(0.3));
    QTest::mouseMove(window.window(), at(0.75));
    tick(); // must not move the handle
    QTest::mouseRelease(window.window(), Qt::LeftButton, Qt::NoModifier, at(0.75));
    window.settle();
    EXPECT_NEAR(lastPlayback().time, 150, 6);

    EXPECT_EQ(slider.interface()->valueInterface()->maximumValue().toDouble(), 1);
    slider.item->forceActiveFocus(Qt::TabFocusReason);
    for (const auto& [key, seconds] : {std::pair{Qt::Key_Home, 0.0},
                                       {Qt::Key_PageUp, 20.0},
                                       {Qt::Key_Right, 24.0},
                                       {Qt::Key_Left, 20.0},
                                       {Qt::Key_PageDown, 0.0},
                                       {Qt::Key_End, 200.0}}) {
        window.key(key);
        EXPECT_NEAR(lastPlayback().time, seconds, 0.1) << key;
        tick();
    }

    window.click(window.inRow(single, "Pause"));
    EXPECT_FALSE(lastPlayback().playing);
    EXPECT_TRUE(window.shows("Play"));
    EXPECT_EQ(slider.description(), "3:20 of 3:20");
}

TEST_F(ResultsPage, StopsThePreviewWhenItsRowGoes) {
    window.click(window.inRow(single, "Play"));
    ASSERT_TRUE(lastPlayback().playing);
    view.matchedTracks.update([](auto& edited) { edited.erase(edited.begin() + 1); });
    window.settle();
    EXPECT_FALSE(lastPlayback().playing) << "replaced by another list";

    window.click(window.inRow(several, "Play"));
    ASSERT_TRUE(lastPlayback().playing);
    window.click("Close");
    EXPECT_FALSE(lastPlayback().playing) << "gone with the page";

    window.openResults();
    window.click(window.inRow(several, "Play"));
    window.click(window.inRow(several, "Choose match"));
    window.key(Qt::Key_Down);
    window.key(Qt::Key_Return);
    window.click("Close");
    EXPECT_TRUE(lastPlayback().playing) << "no row has the previewed track";

    view.showResultsPage.set(true);
    window.settle();
    togglePreview(view, *rows().front().selectedTrack);
    ASSERT_TRUE(lastPlayback().playing);
    view.showResultsPage.set(false); // like a click while the file is opened
    window.settle();
    EXPECT_FALSE(lastPlayback().playing) << "begun in the turn that closes the page";
}

} // namespace
} // namespace orvalen::test
