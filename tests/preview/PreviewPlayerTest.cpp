#include "preview/PreviewPlayer.h"

#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>
#include <limits>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

Track at(std::string path) {
    return track("A", "T", {}, std::move(path));
}

class PreviewPlayer : public testing::Test {
protected:
    PreviewPlayer() { view.musicFolderURLs.set({Location{"/Music"}}); }

    FakePlayback& playback(std::size_t index = 0) { return *test.audioPlayers.playbacks.at(index); }
    std::size_t opened() const { return test.audioPlayers.playbacks.size(); }
    /// Runs the progress timer once and returns the progress.
    double tick() {
        test.mainQueue.advance(10ms);
        return view.playbackProgress.get();
    }

    TestPlatform test;
    ContentView& view = test.view;
    const Track one = at("/Music/1.mp3");
    const Track two = at("/Music/2.mp3");
};

TEST_F(PreviewPlayer, StartsAFreshPreview) {
    view.peakLevelLeft.set(5);
    view.peakLevelRight.set(6);
    test.audioPlayers.whenOpening = [&](const std::string& path) {
        EXPECT_EQ(path, one.path);
        EXPECT_EQ(test.folderAccess.starts["/Music"], 1) << "access is held while the file is opened";
    };
    playPreview(view, one);
    EXPECT_THAT(playback().calls, ElementsAre("prepareToPlay", "play"));
    EXPECT_EQ(view.selectedTrack.get(), one);
    EXPECT_TRUE(view.isPlaying.get());
    EXPECT_TRUE(view.playbackTimer.get());
    EXPECT_EQ(view.peakLevelLeft.get() + view.peakLevelRight.get(), 0);
    EXPECT_EQ(test.folderAccess.starts["/Music"], 0);
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(PreviewPlayer, AsksTheFirstFolderWhosePathBeginsTheTracks) {
    struct Case {
        const char* quirk;
        std::vector<Location> folders;
        std::string path;
        std::string asked; ///< empty: no preview
    };
    const Case cases[] = {
        {"outside every folder", {{"/Music"}, {"/Other"}}, "/Elsewhere/1.mp3", ""},
        {"the second, in the other form of its accent",
         {{"/Other"}, {"/Cafe\u0301"}},
         "/Caf\u00E9/1.mp3",
         "/Cafe\u0301"},
        {"list order, not the longest", {{"/Music"}, {"/Music/A"}}, "/Music/A/1.mp3", "/Music"},
        {"texts, not components", {{"/Music/A"}}, "/Music/AB/x.mp3", "/Music/A"},
        {"no half letters", {{"/Cafe"}}, "/Cafe\u0301/1.mp3", ""},
    };
    for (const Case& c : cases) {
        TestPlatform fresh;
        fresh.view.musicFolderURLs.set(c.folders);
        playPreview(fresh.view, at(c.path));
        EXPECT_EQ(fresh.view.isPlaying.get(), !c.asked.empty()) << c.quirk;
        EXPECT_EQ(fresh.folderAccess.starts.size(), c.asked.empty() ? 0U : 1U) << c.quirk;
        EXPECT_EQ(fresh.folderAccess.starts.contains(c.asked), !c.asked.empty()) << c.quirk;
    }
}

TEST_F(PreviewPlayer, StopsTheOldPlayerOnlyOnceTheNewMayBeOpened) {
    playPreview(view, one);
    test.folderAccess.refused = {"/Music"};
    playPreview(view, two);
    EXPECT_EQ(opened(), 1U);
    EXPECT_TRUE(playback().playing && view.playbackTimer.get()) << "a refused folder";
    EXPECT_EQ(view.selectedTrack.get(), one);
    EXPECT_THAT(test.console.lines(), IsEmpty());

    test.folderAccess.refused = {};
    test.audioPlayers.whenOpening = [&](const std::string&) {
        EXPECT_EQ(playback().calls.back(), "stop");
        EXPECT_FALSE(view.playbackTimer.get());
        EXPECT_TRUE(view.audioPlayer.get()) << "the stopped player stays until the new one is there";
    };
    playPreview(view, two);
    EXPECT_TRUE(playback(1).playing);
    EXPECT_EQ(view.selectedTrack.get(), two);
    EXPECT_EQ(test.mainQueue.repeatingTimers(), 1U);
}

TEST_F(PreviewPlayer, AFileThatCannotBeOpenedLeavesAStoppedPlayerAndNoTimer) {
    playPreview(view, one);
    playback().time = 50;
    EXPECT_DOUBLE_EQ(tick(), 0.5);
    test.audioPlayers.unplayable = {two.path};
    playPreview(view, two);
    EXPECT_THAT(test.console.lines(), ElementsAre("Playback error: not a playable file"));
    EXPECT_FALSE(playback().playing);
    EXPECT_EQ(view.selectedTrack.get(), one);
    EXPECT_TRUE(view.isPlaying.get());
    EXPECT_TRUE(view.audioPlayer.get());
    EXPECT_EQ(test.mainQueue.repeatingTimers(), 0U);
    EXPECT_DOUBLE_EQ(tick(), 0.5) << "nothing writes the progress any more";
    EXPECT_EQ(test.folderAccess.starts["/Music"], 0);

    // The button still reads "Pause" and the player still exists. Pressing it resumes playback without a
    // timer.
    togglePreview(view, one);
    EXPECT_TRUE(playback().playing);
    EXPECT_EQ(test.mainQueue.repeatingTimers(), 0U);
}

TEST_F(PreviewPlayer, TogglesBetweenPlayingAndPaused) {
    togglePreview(view, one);
    EXPECT_TRUE(view.isPlaying.get());
    playback().time = 30;

    togglePreview(view, at(one.path)); // the same file with other tags
    EXPECT_FALSE(playback().playing);
    EXPECT_FALSE(view.isPlaying.get());
    togglePreview(view, one);
    EXPECT_TRUE(view.isPlaying.get());
    EXPECT_THAT(playback().calls, ElementsAre("prepareToPlay", "play", "pause", "play"));
    EXPECT_EQ(playback().time, 30) << "it goes on where it was";

    togglePreview(view, two);
    EXPECT_EQ(opened(), 2U);
    EXPECT_EQ(view.selectedTrack.get(), two);
}

TEST_F(PreviewPlayer, StopsOnlyForTheCurrentTrack) {
    playPreview(view, one);
    stopPreviewIfCurrent(view, two);
    stopPreviewIfCurrent(view, std::nullopt);
    EXPECT_TRUE(playback().playing);
    EXPECT_TRUE(view.isPlaying.get());

    stopPreviewIfCurrent(view, at(one.path));
    EXPECT_EQ(playback().calls.back(), "stop");
    EXPECT_FALSE(view.isPlaying.get());
    EXPECT_EQ(view.selectedTrack.get(), one);
    EXPECT_TRUE(view.audioPlayer.get());
    EXPECT_EQ(test.mainQueue.repeatingTimers(), 1U);
    togglePreview(view, one);
    EXPECT_TRUE(playback().playing) << "a stopped preview plays again";
    EXPECT_EQ(opened(), 1U);
}

TEST_F(PreviewPlayer, TheTickWritesThePlayedFraction) {
    playPreview(view, one);
    playback().time = 25;
    test.mainQueue.advance(9ms);
    EXPECT_DOUBLE_EQ(view.playbackProgress.get(), 0.0);
    test.mainQueue.advance(1ms);
    EXPECT_DOUBLE_EQ(view.playbackProgress.get(), 0.25);

    togglePreview(view, one);
    EXPECT_DOUBLE_EQ(tick(), 0.0);
    EXPECT_EQ(positionLabel(view, one), "0:25") << "the label keeps the paused position";

    view.audioPlayer.set(nullptr);
    view.playbackProgress.set(0.7);
    EXPECT_DOUBLE_EQ(tick(), 0.0);
}

TEST_F(PreviewPlayer, StaysSoundWithAPlayerThatLies) {
    struct Case {
        double time, length, fraction;
    };
    const Case cases[] = {{0, 0, 0},    {5, 0, 0},          {150, 100, 1},
                          {-1, 100, 0}, {5, notANumber, 0}, {5, infinite, 0}};
    view.playbackProgress.set(0.5);
    seekPreview(view); // nothing is loaded
    playPreview(view, one);
    for (const Case& c : cases) {
        playback().time = c.time;
        playback().length = c.length;
        EXPECT_DOUBLE_EQ(tick(), c.fraction) << c.time << " of " << c.length;
    }
    for (const double length : {240.0, infinite}) {
        playback().length = length;
        view.playbackProgress.set(0.25);
        seekPreview(view);
        EXPECT_DOUBLE_EQ(playback().time, 60) << "a seek needs a length";
    }
}

TEST_F(PreviewPlayer, LabelsOnlyThePreviewedTrack) {
    EXPECT_EQ(positionLabel(view, one), "0:00");
    playPreview(view, one);
    playback().time = 61.9;
    playback().length = 200.2;
    EXPECT_EQ(positionLabel(view, at(one.path)), "1:01");
    EXPECT_EQ(lengthLabel(view, one), "3:20");
    EXPECT_EQ(positionLabel(view, two), "0:00");
    EXPECT_EQ(lengthLabel(view, two), "0:00");
    view.audioPlayer.set(nullptr);
    EXPECT_EQ(lengthLabel(view, one), "0:00");
}

TEST(PlaybackTime, CutsToWholeSeconds) {
    const std::pair<double, const char*> cases[] = {
        {9, "0:09"},   {59.9, "0:59"},     {60, "1:00"},         {3600, "60:00"}, {-0.5, "0:00"},
        {-61, "0:00"}, {infinite, "0:00"}, {notANumber, "0:00"}, {1e300, "0:00"}};
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(formatPlaybackTime(seconds), text) << seconds;
}

} // namespace
} // namespace orvalen::test
