#include "platform/desktop/MpvAudioPlayers.h"

#include "core/Files.h"
#include "desktop/EventLoop.h"
#include "desktop/TagBytes.h"
#include "platform/desktop/MpvCore.h"
#include "platform/desktop/PlayerSound.h"
#include "support/Folders.h"
#include "support/TemporaryFolder.h"

#include <QFile>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;

std::string sample(const char* name) {
    return std::string(ORVALEN_SAMPLES_DIR) + "/" + name;
}

class MpvAudioPlayersTest : public testing::Test {
protected:
    std::unique_ptr<AudioPlayer> open(const std::string& path) {
        auto player = players.open(path);
        EXPECT_TRUE(player) << path << ": " << player.error().description;
        return player ? std::move(*player) : nullptr;
    }

    /// Returns a file of 30 s, so that no delay of the test lasts as long as the file.
    std::string longFile() const {
        return folder.write("long.wav", wav(riffChunk("data", std::string(30 * 8000, '\x80'))));
    }

    MpvAudioPlayers players;
    TemporaryFolder folder;
};

TEST_F(MpvAudioPlayersTest, PlaysEveryKindOfFile) {
    const struct {
        const char* name;
        double seconds;
    } files[] = {
        {"Wedding/Marlow Quay - Paper Boats.m4a", 2},
        {"Wedding/Marlow Quay - Harbour Lights.mp4", 2},
        {"Wedding/The Lanterns - First Dance.wav", 1},
        {"House/Static Garden - Bloom.aiff", 1},
        {"Wedding/Νίκη Αλεξίου - Καλοκαίρι.mp3", 2},
        {"House/Velvet Circuit - Midnight Arcade (Extended Mix).mp3", 2}, // with a cover picture
    };
    for (const auto& file : files) {
        const auto player = open(sample(file.name));
        ASSERT_NE(player, nullptr);
        EXPECT_NEAR(player->duration(), file.seconds, 0.1) << file.name;
        EXPECT_FALSE(player->isPlaying());
        EXPECT_EQ(player->currentTime(), 0);
        player->play();
        EXPECT_TRUE(player->isPlaying()) << file.name;
        EXPECT_TRUE(turnUntil([&] { return player->currentTime() > 0.1; })) << file.name;
    }
}

TEST_F(MpvAudioPlayersTest, MovesWithTheClockAndWaitsWhilePausedAndJumpsAtOnce) {
    const auto player = open(longFile());
    player->play();
    ASSERT_TRUE(turnUntil([&] { return player->currentTime() > 0; }));
    std::set<double> times;
    for (int look = 0; look < 20; ++look) {
        turnFor(10ms);
        times.insert(player->currentTime());
    }
    EXPECT_GT(times.size(), 10U) << "the player itself answers only five times a second";
    player->pause();
    EXPECT_FALSE(player->isPlaying());
    player->setCurrentTime(29);
    EXPECT_DOUBLE_EQ(player->currentTime(), 29);
    turnFor(1500ms); // a player that went on would reach the end
    EXPECT_NEAR(player->currentTime(), 29, 0.05);
    player->play();
    EXPECT_GT(player->currentTime(), 28.9) << "it started again";
    EXPECT_TRUE(turnUntil([&] { return !player->isPlaying(); }));
}

TEST_F(MpvAudioPlayersTest, EndsByItselfAndBeginsAgain) {
    const auto player = open(sample("Wedding/Speech Intro.mp3"));
    player->play();
    ASSERT_TRUE(turnUntil([&] { return !player->isPlaying(); }));
    player->play();
    EXPECT_TRUE(player->isPlaying());
    EXPECT_LT(player->currentTime(), 0.5);
    EXPECT_TRUE(turnUntil([&] { return player->currentTime() > 0.3; }));

    ASSERT_TRUE(turnUntil([&] { return !player->isPlaying(); }));
    player->stop();
    player->play();
    EXPECT_TRUE(player->isPlaying()) << "after its end and a stop";
    EXPECT_TRUE(turnUntil([&] { return player->currentTime() > 0.3; }));
}

TEST_F(MpvAudioPlayersTest, PlaysFromThereAfterAJumpInAPause) {
    const struct {
        double left; ///< seconds between the new position and the end; at the end, playback starts again
        std::chrono::milliseconds pause;
    } cases[] = {{0, 0ms}, {0, 300ms}, {0.3, 300ms}, {0.1, 300ms}};
    for (const auto& row : cases) {
        const auto player = open(sample("Wedding/Speech Intro.mp3"));
        const double place = player->duration() - row.left;
        const double expected = row.left > 0 ? place : 0;
        player->setCurrentTime(place);
        turnFor(row.pause);
        const auto start = std::chrono::steady_clock::now();
        player->play();
        EXPECT_LT(player->currentTime(), expected + 0.4) << row.left;
        double lowest = place;
        EXPECT_TRUE(turnUntil(
            [&] {
                lowest = std::min(lowest, player->currentTime());
                return !player->isPlaying();
            },
            20s));
        const std::chrono::duration<double> heard = std::chrono::steady_clock::now() - start;
        EXPECT_GT(lowest, expected - 0.05) << row.left;
        EXPECT_GT(heard.count(), player->duration() - expected - 0.2) << "all of the rest is played";
    }
}

TEST_F(MpvAudioPlayersTest, ClosesTheFileOnStopAndGoesOnFromThere) {
    const std::filesystem::path path = longFile();
    const auto isFileOpen = [&] {
        std::error_code error; // a descriptor may be closed meanwhile
        for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd"))
            if (std::filesystem::read_symlink(descriptor, error) == path)
                return true;
        return false;
    };
    const auto player = open(path.string());
    player->play();
    ASSERT_TRUE(turnUntil([&] { return player->currentTime() > 1; }));
    EXPECT_TRUE(isFileOpen());
    player->stop();
    EXPECT_TRUE(turnUntil([&] { return !isFileOpen(); })) << "its drive could not be removed";
    EXPECT_FALSE(player->isPlaying());
    const double stopped = player->currentTime();
    EXPECT_GT(stopped, 0.5); // positions between two answers of the player are estimated
    EXPECT_NEAR(player->duration(), 30, 0.1);
    player->play();
    EXPECT_TRUE(player->isPlaying());
    double lowest = stopped;
    EXPECT_TRUE(turnUntil([&] {
        lowest = std::min(lowest, player->currentTime());
        return player->currentTime() > stopped + 0.3;
    }));
    EXPECT_GT(lowest, stopped - 0.3) << "it started again";
}

TEST_F(MpvAudioPlayersTest, OpensFilesWhoseNamesLookLikeSomethingElse) {
    const std::string song = readWholeFile(sample("Wedding/Speech Intro.mp3")).value();
    for (const char* name :
         {"100% \"Hits\" 'live'.mp3", "http://example/x.mp3", "%4%file.mp3", "${path}.mp3", "http:x.mp3"})
        EXPECT_NE(open(folder.write(name, song)), nullptr);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    EXPECT_NE(open("http:x.mp3"), nullptr) << "relative";
    std::filesystem::current_path(before);
}

TEST_F(MpvAudioPlayersTest, RefusesWhatIsNoAudioFile) {
    const std::string song = sample("Wedding/Speech Intro.mp3");
    folder.makeFolder("folder.mp3");
    ASSERT_EQ(::mkfifo(folder.path("pipe.mp3").c_str(), 0600), 0);
    folder.write("empty.mp3");
    folder.write("text.mp3", std::string(5000, 'x'));
    std::filesystem::copy_file(song, folder.path("song.mp3"));
    folder.write("list.mp3", "#EXTM3U\n" + song + "\n");
    folder.write("hls.mp3", "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" + song +
                                "\n#EXT-X-ENDLIST\n");
    folder.write("concat.mp3", "ffconcat version 1.0\nfile song.mp3\n"); // the song beside it
    folder.write("cue.mp3", "FILE \"" + song + "\" MP3\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n");
    std::filesystem::copy_file(sample("House/Velvet Circuit - Neon Rain.mp3"), folder.path("damaged.mp3"));
    for (const char* name : {"missing.mp3", "folder.mp3", "pipe.mp3", "empty.mp3", "text.mp3", "list.mp3",
                             "hls.mp3", "concat.mp3", "cue.mp3", "damaged.mp3"}) {
        const auto player = players.open(folder.path(name));
        ASSERT_FALSE(player) << name;
        EXPECT_NE(player.error().description, "The drive does not answer") << name << " is refused at once";
    }
}

TEST(PlayerSound, IsInTheProgramAndNeverHoldsTheWindowUp) {
    PlayerSound sound;
    QFile file(":/sounds/Glass.mp3");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    MpvCore core;
    const auto loaded = core.load("hex://" + file.readAll().toHex().toStdString(), 3s);
    ASSERT_TRUE(loaded) << loaded.error().description;
    EXPECT_NEAR(core.number("duration", 10s).value_or(0), 1.6, 0.2);

    sound.play("Glass"); // creates the player
    const auto start = std::chrono::steady_clock::now();
    sound.play("Glass");
    sound.play("No such sound");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s) << "shorter than the sound";
}

} // namespace
} // namespace orvalen::test
