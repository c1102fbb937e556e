#include "library/FolderWalk.h"

#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FolderWalkTest : public testing::Test {
protected:
    /// What the walk lists, relative to the folder.
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
