#include "library/FolderScan.h"

#include "core/LibraryIndexBuilder.h"
#include "library/FolderWalk.h"
#include "library/LibraryFile.h"
#include "support/Builders.h"
#include "support/Fakes.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProgram.h"
#include "support/TemporaryFolder.h"
#include "support/TestPlatform.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>

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
        test.view.musicFolderURLs.set({{music.path()}});
        test.view.scanningFileName.observe([this] {
            progress.emplace_back(test.view.scanProgress.get(), test.view.scanningFileName.get());
        });
    }
    void scan() {
        scanLibrary(test.view);
        test.settle();
    }
    TemporaryFolder music;
    TestPlatform test;
    std::vector<Progress> progress;
};

TEST_F(FolderScan, FilesAudioByItsExtensionAlone) {
    for (const char* file : {"a.mp3", "b.M4A", "c.Wav", "d.mp4", "e.aiff", "f.AIF", "g.flac", "h.ogg",
                             "i.mp3.part", "mp3", "j.", "l.\u212Aav", "m.m.mp3"})
        music.write(file);
    music.makeFolder("Live.mp3"); // a folder named like a file
    music.write("Live.mp3/inside.wav");
    scan();
    std::vector<std::string> titles;
    for (const TrackView& track : allTracks(test.view.trackDict.get()))
        titles.emplace_back(track.title);
    EXPECT_THAT(titles, ElementsAre("Live", "inside", "a", "b", "c", "d", "e", "f", "m.m"));
    EXPECT_EQ(test.view.trackCount.get(), 9);
}

TEST_F(FolderScan, ReportsEveryFiftiethItemAndTheLast) {
    for (int i = 0; i < 120; ++i)
        music.write(std::to_string(1000 + i) + (i % 4 == 0 ? ".mp3" : ".jpg"));
    scan();
    EXPECT_THAT(progress, ElementsAre(Pair(0, ""), Pair(0.01, "Preparing scan…"), Pair(0, "1000.mp3"),
                                      Pair(50.0 / 120, "1050.jpg"), Pair(100.0 / 120, "1100.mp3"),
                                      Pair(119.0 / 120, "1119.jpg"), Pair(0, "")));
    EXPECT_EQ(test.view.trackCount.get(), 30);
}

TEST_F(FolderScan, FoldersWithoutAudioLeaveAnEmptyLibraryAndStillSaySo) {
    test.view.trackDict.set(buildIndex(std::vector<Track>{track("Old", "Gone")}));
    test.view.trackCount.set(1);
    test.view.musicFolderURLs.set({{music.path("missing")}});
    scanLibrary(test.view);
    while (test.tagQueue.runOne()) {
    }
    EXPECT_EQ(test.view.trackDict.get().trackCount(), 1U) << "the old index is shown until the end";
    test.settle();
    EXPECT_TRUE(test.view.trackDict.get().empty());
    EXPECT_EQ(test.view.trackCount.get(), 0);
    EXPECT_EQ(test.dialogs.messages.size(), 1U);
    EXPECT_THAT(progress, ElementsAre(Pair(0, ""), Pair(0.01, "Preparing scan…"), Pair(0, "")));

    test.view.musicFolderURLs.set({});
    scan();
    EXPECT_EQ(progress.size(), 3U) << "no folder, no scan";
    EXPECT_EQ(test.dialogs.messages.size(), 1U);
}

TEST_F(FolderScan, EndsWithTheFilesTheSoundAndTheMessageInThisOrder) {
    music.write("1.mp3");
    test.dialogs.whileOpen = [this] {
        EXPECT_THAT(test.console.lines(),
                    ElementsAre(StartsWith("✅ Persistent library saved to "),
                                StartsWith("Auto-saved library backup to " + test.support().path())));
        EXPECT_THAT(test.sound.played, ElementsAre("Glass"));
        EXPECT_EQ(test.view.trackCount.get(), 1);
        EXPECT_EQ(test.view.scanProgress.get(), 0);
    };
    scan();
    ASSERT_EQ(test.dialogs.messages.size(), 1U);
    EXPECT_EQ(test.dialogs.messages[0].title, "Library Refreshed");
    EXPECT_EQ(test.dialogs.messages[0].text,
              "Your scanned library has been updated and preferred tracks preserved.");
}

TEST_F(FolderScan, KeepsThePreferredMatchesStoredBeforeTheFirstFileIsReadAndOffersLaterOnes) {
    music.write("1.mp3");
    music.write("2.mp3");
    test.database().savePreferredMatch("before", "/b.mp3");
    scanLibrary(test.view);
    test.tagQueue.runOne();
    test.database().savePreferredMatch("while listing", "/l.mp3");
    while (test.mediaAssets.opened.empty() && test.tagQueue.runOne()) {
    }
    test.database().savePreferredMatch("meanwhile", "/m.mp3");
    test.settle();
    EXPECT_THAT(test.database().allPreferredMatches(),
                UnorderedElementsAre(Pair("before", "/b.mp3"), Pair("while listing", "/l.mp3")));
    EXPECT_THAT(test.view.earlierChoices.get(), ElementsAre(Pair("meanwhile", "/m.mp3")));
    {
        OtherProgram other(test.support().path("orvalen.sqlite"));
        other.run("BEGIN EXCLUSIVE");
        scanLibrary(test.view);
        while (test.tagQueue.runOne()) {
        }
    }
    test.settle();
    EXPECT_EQ(test.database().allPreferredMatches().size(), 2U) << "they could not be read";
}

TEST_F(FolderScan, AnnouncesEachAudioFileInTheOrderOfReadingWhileFoldersAreStillListed) {
    for (const char* file : {"a/1.mp3", "a/2.txt", "a/3.wav", "b/4.mp3"})
        music.write(file);
    scanLibrary(test.view);
    for (int step = 0; step < 3; ++step) // the music folder, "a", "b"
        test.tagQueue.runOne();
    EXPECT_EQ(test.mediaAssets.expected.size(), 2U);
    EXPECT_THAT(test.mediaAssets.opened, IsEmpty());
    bool ran = false;
    test.tagQueue.post([&] { ran = true; });
    test.tagQueue.runOne();
    test.tagQueue.runOne();
    EXPECT_TRUE(ran) << "a file that is browsed to need not wait for the whole scan";
    EXPECT_LT(test.mediaAssets.opened.size(), 2U);
    test.settle();
    EXPECT_EQ(test.mediaAssets.expected, test.mediaAssets.opened);
    EXPECT_EQ(test.mediaAssets.passed, 3U);
}

TEST_F(FolderScan, KeepsTheLibraryOfBeforeWhenAFolderVanishes) {
    TemporaryFolder drive;
    test.view.musicFolderURLs.set(
        {{music.path()}, {drive.path("stick")}, {music.path("missing all the time")}});
    music.write("1.mp3");
    drive.write("stick/2.mp3");
    const auto unreadable = [&](const std::string& path) {
        test.mediaAssets.tags[path].common = failure("No such file or directory");
    };
    unreadable(music.path("1.mp3"));
    scan();
    EXPECT_EQ(test.view.lastScan.get().unreadableFiles, 1U);
    EXPECT_FALSE(test.support().exists("Orvalen/library.previous.orvl")) << "there was none before";
    scan();
    EXPECT_FALSE(test.support().exists("Orvalen/library.previous.orvl")) << "the same file as before";

    const std::string good = test.support().read("Orvalen/library.orvl");
    unreadable(drive.path("stick/2.mp3"));
    music.write("3.mp3");
    scanLibrary(test.view);
    while (test.mediaAssets.opened.size() < 7 && test.tagQueue.runOne()) {
    }
    std::filesystem::remove_all(drive.path("stick"));
    test.settle();
    EXPECT_EQ(test.view.lastScan.get().unreadableFiles, 2U);
    EXPECT_THAT(test.view.lastScan.get().vanishedFolders, ElementsAre(drive.path("stick")));
    EXPECT_EQ(test.support().read("Orvalen/library.previous.orvl"), good);
    scan();
    EXPECT_EQ(test.support().read("Orvalen/library.previous.orvl"), good) << "not the one that lost files";

    const auto folders = test.view.musicFolderURLs.get();
    loadLibraryOfBefore(test.view);
    EXPECT_EQ(test.view.trackCount.get(), 2);
    EXPECT_EQ(test.view.musicFolderURLs.get(), folders);
    EXPECT_EQ(test.support().read("Orvalen/library.orvl"), good) << "for the next start";
    EXPECT_THAT(test.view.lastScan.get().vanishedFolders, IsEmpty());
    scan();
    EXPECT_THAT(test.view.lastScan.get().vanishedFolders, ElementsAre(drive.path("stick")))
        << "a folder that was missing at the start already";
    EXPECT_EQ(test.support().read("Orvalen/library.previous.orvl"), good);
}

class FolderWalkTest : public testing::Test {
protected:
    /// Returns the listed paths, relative to the folder.
    std::vector<std::string> walk(std::vector<std::string> entries) {
        FolderWalk folderWalk(std::move(entries), console);
        while (folderWalk.step()) {
        }
        std::vector<std::string> items = folderWalk.takeItems();
        for (std::string& item : items) {
            EXPECT_TRUE(item.starts_with(folder.path() + "/")) << item;
            item.erase(0, folder.path().size() + 1);
        }
        return items;
    }

    TemporaryFolder folder;
    FakeConsole console;
};

TEST_F(FolderWalkTest, ListsEachItemBeforeWhatItHoldsSortedByBytes) {
    for (const char* file : {"b.mp3", "B.mp3", "a/z.mp3", "a/Deep/er/x.wav", "a.mp3", "ä.mp3", "e/only.txt"})
        folder.write(file);
    folder.makeFolder("empty");
    EXPECT_THAT(walk({folder.path()}),
                ElementsAre("B.mp3", "a", "a/Deep", "a/Deep/er", "a/Deep/er/x.wav", "a/z.mp3", "a.mp3",
                            "b.mp3", "e", "e/only.txt", "empty", "ä.mp3"));
}

TEST_F(FolderWalkTest, FollowsTheOrderOfTheEntriesAndRepeatsWhatIsListedTwice) {
    folder.write("a/one.mp3");
    folder.write("b/two.mp3");
    const std::string a = folder.path("a");
    EXPECT_THAT(walk({folder.path("b") + "/", a, a, folder.path("gone"), folder.path("b/two.mp3"),
                      folder.path("b/gone.mp3"), folder.path("b/two.mp3/below")}),
                ElementsAre("b/two.mp3", "a/one.mp3", "a/one.mp3", "b/two.mp3"));
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(FolderWalkTest, ListsAFolderThatItMayNotReadWithoutItsContent) {
    folder.write("a.mp3");
    folder.write("shut/b.mp3");
    ASSERT_EQ(::chmod(folder.path("shut").c_str(), 0), 0);
    const OrdinaryUser user(folder);
    EXPECT_THAT(walk({folder.path()}), ElementsAre("a.mp3", "shut"));
}

TEST_F(FolderWalkTest, LeavesOutWhatIsHiddenUnlessTheUserChoseItself) {
    for (const char* file : {".DS_Store", "._Track.mp3", ".hidden/in.mp3", "..mp3", "shown.mp3"})
        folder.write(file);
    EXPECT_THAT(walk({folder.path()}), ElementsAre("shown.mp3"));
    EXPECT_THAT(walk({folder.path(".hidden"), folder.path("._Track.mp3")}),
                ElementsAre(".hidden/in.mp3", "._Track.mp3"));
}

TEST_F(FolderWalkTest, ListsLinksAndFollowsThoseAloneThatTheUserChose) {
    namespace fs = std::filesystem;
    folder.write("real/song.mp3");
    fs::create_directory_symlink(folder.path("real"), folder.path("link"));
    fs::create_directory_symlink(folder.path(), folder.path("real/up")); // a cycle
    fs::create_symlink(folder.path("real/song.mp3"), folder.path("real/to a file.mp3"));
    fs::create_symlink(folder.path("gone"), folder.path("real/dead.mp3"));
    fs::create_symlink(folder.path("loop.mp3"), folder.path("loop.mp3"));
    EXPECT_THAT(walk({folder.path()}), ElementsAre("link", "loop.mp3", "real", "real/dead.mp3",
                                                   "real/song.mp3", "real/to a file.mp3", "real/up"));
    EXPECT_THAT(walk({folder.path("link"), folder.path("loop.mp3")}),
                ElementsAre("link/dead.mp3", "link/song.mp3", "link/to a file.mp3", "link/up"));
}

TEST_F(FolderWalkTest, ANameThatIsNotUtf8CostsOneLineAndAllItHolds) {
    folder.write("Caf\xE9.mp3");
    folder.write("caf\xC3\xA9.mp3");
    folder.write("M\xFCsik \xE2\x80\x93 \xE2\x80/in.mp3");
    folder.write("M\xFCsik \xE2\x80\x93 \xE2\x80/Deep\xFF/in.mp3");
    folder.write(".\xFF");
    EXPECT_THAT(walk({folder.path()}), ElementsAre("café.mp3"));
    EXPECT_THAT(console.lines(),
                testing::UnorderedElementsAre(
                    "Skipped " + folder.path("Caf\\xE9.mp3") + ": the name is not valid UTF-8",
                    "Skipped " + folder.path("M\\xFCsik – \\xE2\\x80") + ": the name is not valid UTF-8"));
}

} // namespace
} // namespace orvalen::test
