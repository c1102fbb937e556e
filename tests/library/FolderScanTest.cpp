#include "library/FolderScan.h"

#include "core/LibraryIndexBuilder.h"
#include "library/LibraryFile.h"
#include "support/Builders.h"
#include "support/OtherProgram.h"
#include "support/TestPlatform.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;
using testing::UnorderedElementsAre;

using Progress = std::pair<double, std::string>;

class FolderScan : public testing::Test {
protected:
    FolderScan() {
        world.view.musicFolderURLs.set({{music.path()}});
        world.view.scanningFileName.observe([this] {
            progress.emplace_back(world.view.scanProgress.get(), world.view.scanningFileName.get());
        });
    }
    void scan() {
        scanLibrary(world.view);
        world.settle();
    }
    std::vector<std::string> titles() const {
        const LibraryIndex& index = world.view.trackDict.get();
        std::vector<std::string> result;
        for (std::size_t position = 0; position < index.trackCount(); ++position)
            result.emplace_back(index.track(position).title);
        return result;
    }

    TemporaryFolder music;
    TestPlatform world;
    std::vector<Progress> progress;
};

TEST_F(FolderScan, FilesAudioByItsExtensionAlone) {
    for (const char* file : {"a.mp3", "b.M4A", "c.Wav", "d.mp4", "e.aiff", "f.AIF", "g.flac", "h.ogg",
                             "i.mp3.part", "mp3", "j.", "l.\u212Aav", "m.m.mp3"})
        music.write(file);
    music.makeFolder("Live.mp3"); // a folder that is named like a file
    music.write("Live.mp3/inside.wav");
    scan();
    EXPECT_THAT(titles(), ElementsAre("Live", "inside", "a", "b", "c", "d", "e", "f", "m.m"));
    EXPECT_EQ(world.view.trackCount.get(), 9);
}

TEST_F(FolderScan, ReportsEveryFiftiethItemAndTheLast) {
    for (int i = 0; i < 120; ++i)
        music.write(std::to_string(1000 + i) + (i % 4 == 0 ? ".mp3" : ".jpg"));
    scan();
    EXPECT_THAT(progress, ElementsAre(Pair(0, ""), Pair(0.01, "Preparing scan…"), Pair(0, "1000.mp3"),
                                      Pair(50.0 / 120, "1050.jpg"), Pair(100.0 / 120, "1100.mp3"),
                                      Pair(119.0 / 120, "1119.jpg"), Pair(0, "")));
    EXPECT_EQ(world.view.trackCount.get(), 30);
}

TEST_F(FolderScan, WithoutFoldersNothingHappens) {
    world.view.musicFolderURLs.set({});
    scan();
    EXPECT_THAT(progress, IsEmpty());
    EXPECT_EQ(world.tagQueue.pending() + world.mainQueue.pending(), 0U);
    EXPECT_THAT(world.dialogs.messages, IsEmpty());
}

TEST_F(FolderScan, FoldersWithoutAudioLeaveAnEmptyLibraryAndStillSaySo) {
    world.view.trackDict.set(buildIndex(std::vector<Track>{track("Old", "Gone")}));
    world.view.trackCount.set(1);
    world.view.musicFolderURLs.set({{music.path("missing")}});
    scanLibrary(world.view);
    while (world.tagQueue.runOne()) {
    }
    EXPECT_EQ(world.view.trackDict.get().trackCount(), 1U) << "the old index is shown until the end";
    world.settle();
    EXPECT_TRUE(world.view.trackDict.get().empty());
    EXPECT_EQ(world.view.trackCount.get(), 0);
    EXPECT_EQ(world.dialogs.messages.size(), 1U);
    EXPECT_THAT(progress, ElementsAre(Pair(0, ""), Pair(0.01, "Preparing scan…"), Pair(0, "")));
}

TEST_F(FolderScan, EndsWithTheFilesTheSoundAndTheMessageInThisOrder) {
    music.write("1.mp3");
    world.dialogs.whileOpen = [this] {
        EXPECT_THAT(world.console.lines(),
                    ElementsAre(StartsWith("✅ Persistent library saved to "),
                                StartsWith("Auto-saved library backup to " + world.support().path())));
        EXPECT_THAT(world.sound.played, ElementsAre("Glass"));
        EXPECT_EQ(world.view.trackCount.get(), 1);
        EXPECT_EQ(world.view.scanProgress.get(), 0);
    };
    scan();
    ASSERT_EQ(world.dialogs.messages.size(), 1U);
    EXPECT_EQ(world.dialogs.messages[0].title, "Library Refreshed");
    EXPECT_EQ(world.dialogs.messages[0].text,
              "Your scanned library has been updated and preferred tracks preserved.");
}

TEST_F(FolderScan, KeepsThePreferredMatchesStoredBeforeTheFirstFileIsRead) {
    music.write("1.mp3");
    music.write("2.mp3");
    world.database().savePreferredMatch("before", "/b.mp3");
    scanLibrary(world.view);
    world.tagQueue.runOne();
    world.database().savePreferredMatch("while listing", "/l.mp3");
    while (world.mediaAssets.opened.empty() && world.tagQueue.runOne()) {
    }
    world.database().savePreferredMatch("meanwhile", "/m.mp3");
    world.settle();
    EXPECT_THAT(world.database().allPreferredMatches(),
                UnorderedElementsAre(Pair("before", "/b.mp3"), Pair("while listing", "/l.mp3")));
}

TEST_F(FolderScan, KeepsPreferredMatchesThatItCouldNotRead) {
    world.database().savePreferredMatch("before", "/b.mp3");
    {
        OtherProgram other(world.support().path("orvalen.sqlite"));
        other.run("BEGIN EXCLUSIVE");
        scanLibrary(world.view);
        while (world.tagQueue.runOne()) {
        }
    }
    world.settle();
    EXPECT_THAT(world.database().allPreferredMatches(), ElementsAre(Pair("before", "/b.mp3")));
}

TEST_F(FolderScan, AnnouncesEachAudioFileInTheOrderOfReadingWhileFoldersAreStillListed) {
    for (const char* file : {"a/1.mp3", "a/2.txt", "a/3.wav", "b/4.mp3"})
        music.write(file);
    scanLibrary(world.view);
    for (int step = 0; step < 3; ++step) // the music folder, "a", "b"
        world.tagQueue.runOne();
    EXPECT_EQ(world.mediaAssets.expected.size(), 2U);
    EXPECT_THAT(world.mediaAssets.opened, IsEmpty());
    world.settle();
    EXPECT_EQ(world.mediaAssets.expected, world.mediaAssets.opened);
    EXPECT_EQ(world.mediaAssets.passed, 3U);
}

TEST_F(FolderScan, AFileThatIsBrowsedToNeedNotWaitForTheWholeScan) {
    for (int i = 0; i < 10; ++i)
        music.write(std::to_string(i) + ".mp3");
    scanLibrary(world.view);
    bool ran = false;
    world.tagQueue.post([&] { ran = true; });
    world.tagQueue.runOne();
    world.tagQueue.runOne();
    EXPECT_TRUE(ran);
    EXPECT_LT(world.mediaAssets.opened.size(), 2U);
}

TEST_F(FolderScan, KeepsTheLibraryOfBeforeWhenAFolderVanishes) {
    TemporaryFolder drive;
    world.view.musicFolderURLs.set(
        {{music.path()}, {drive.path("stick")}, {music.path("missing all the time")}});
    music.write("1.mp3");
    drive.write("stick/2.mp3");
    const auto unreadable = [&](const std::string& path) {
        world.mediaAssets.tags[path].common = failure("No such file or directory");
    };
    unreadable(music.path("1.mp3"));
    scan();
    EXPECT_EQ(world.view.lastScan.get().unreadableFiles, 1U);
    EXPECT_FALSE(world.support().exists("Orvalen/library.previous.orvl")) << "there was none before";
    scan();
    EXPECT_FALSE(world.support().exists("Orvalen/library.previous.orvl")) << "the same file as before";

    const std::string good = world.support().read("Orvalen/library.orvl");
    unreadable(drive.path("stick/2.mp3"));
    scanLibrary(world.view);
    while (world.mediaAssets.opened.size() < 6 && world.tagQueue.runOne()) {
    }
    std::filesystem::remove_all(drive.path("stick"));
    world.settle();
    EXPECT_EQ(world.view.lastScan.get().unreadableFiles, 2U);
    EXPECT_THAT(world.view.lastScan.get().vanishedFolders, ElementsAre(drive.path("stick")));
    EXPECT_EQ(world.support().read("Orvalen/library.previous.orvl"), good);
    scan();
    EXPECT_EQ(world.support().read("Orvalen/library.previous.orvl"), good) << "not the one that lost files";

    const auto folders = world.view.musicFolderURLs.get();
    loadLibraryOfBefore(world.view);
    EXPECT_EQ(world.view.trackCount.get(), 2);
    EXPECT_EQ(world.view.musicFolderURLs.get(), folders);
    EXPECT_THAT(world.view.lastScan.get().vanishedFolders, IsEmpty());
}

TEST_F(FolderScan, AChoiceMadeWhileFilesAreReadCanBeUsedAgain) {
    music.write("1.mp3");
    scanLibrary(world.view);
    while (world.mediaAssets.opened.empty() && world.tagQueue.runOne()) {
    }
    world.database().savePreferredMatch("meanwhile", "/m.mp3");
    world.settle();
    EXPECT_THAT(world.view.earlierChoices.get(), ElementsAre(Pair("meanwhile", "/m.mp3")));
}

} // namespace
} // namespace orvalen::test
