#include "library/MusicFolders.h"

#include "core/Base64.h"
#include "core/Json.h"
#include "library/SupportFolder.h"
#include "support/TestPlatform.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MusicFolders : public testing::Test {
protected:
    std::vector<std::string> listed() {
        std::vector<std::string> paths;
        for (const Location& location : world.view.musicFolderURLs.get())
            paths.push_back(location.path);
        return paths;
    }
    /// The paths that a start would find in the file.
    std::vector<std::string> saved() {
        std::vector<std::string> paths;
        const auto texts = decodeTexts(world.support().read("Orvalen/folders.json")).value();
        for (const std::string& text : texts)
            paths.push_back(world.folderAccess.resolveBookmark(fromBase64(text).value()).value().path);
        return paths;
    }
    void add(std::vector<std::string> paths) {
        world.dialogs.willOpen(std::move(paths));
        addMusicLocations(world.view);
    }

    TestPlatform world;
};

TEST_F(MusicFolders, TheDialogAsksForFoldersAndAudioFilesTogether) {
    add({});
    ASSERT_EQ(world.dialogs.opened.size(), 1U);
    const OpenOptions& options = world.dialogs.opened.front();
    EXPECT_TRUE(options.files);
    EXPECT_TRUE(options.folders);
    EXPECT_TRUE(options.several);
    EXPECT_THAT(options.types.families, IsEmpty());
    EXPECT_THAT(options.types.extensions, ElementsAre("mp3", "m4a", "wav", "aiff", "aif"));
    EXPECT_EQ(options.prompt, "Add Music Folders or Audio Files");
}

TEST_F(MusicFolders, AddingListsEachLocationOnceAndSavesTheList) {
    add({"/Music/House", "/Music/Café", "/Music/House"});
    EXPECT_THAT(listed(), ElementsAre("/Music/House", "/Music/Café"));
    add({"/Music/Cafe\u0301", "/Music/Intro.wav"}); // the same folder with its accent apart
    EXPECT_THAT(listed(), ElementsAre("/Music/House", "/Music/Café", "/Music/Intro.wav"));
    EXPECT_EQ(saved(), listed());
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

TEST_F(MusicFolders, ACancelledDialogSavesNothing) {
    add({});
    EXPECT_FALSE(world.support().exists("Orvalen/folders.json"));
}

TEST_F(MusicFolders, WhatCannotBeReadIsSkippedAndTheListSavedAllTheSame) {
    world.folderAccess.refused = {"/locked"};
    add({"/locked"});
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_EQ(world.support().read("Orvalen/folders.json"), "[]");
    add({"/locked", "/Music"});
    EXPECT_THAT(listed(), ElementsAre("/Music"));
}

TEST_F(MusicFolders, RemovingTakesEveryEqualEntryAndSaves) {
    world.view.musicFolderURLs.set({{"/A"}, {"/Café"}, {"/B"}, {"/Cafe\u0301"}});
    removeMusicLocation(world.view, world.view.musicFolderURLs.get()[1]);
    EXPECT_THAT(listed(), ElementsAre("/A", "/B"));
    EXPECT_EQ(saved(), listed());
}

TEST_F(MusicFolders, ClearingIsForThisRunOnly) {
    add({"/Music"});
    clearMusicLocations(world.view);
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_THAT(saved(), ElementsAre("/Music"));
}

TEST_F(MusicFolders, ALocationWithoutBookmarkStaysForThisRun) {
    world.folderAccess.withoutBookmark = {"/stick"};
    add({"/stick", "/Music"});
    EXPECT_THAT(listed(), ElementsAre("/stick", "/Music"));
    EXPECT_THAT(saved(), ElementsAre("/Music"));
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

TEST_F(MusicFolders, LoadingReplacesTheListByAQueuedPost) {
    add({"/A", "/B"});
    world.view.musicFolderURLs.set({{"/other"}});
    loadFolderBookmarks(world.view);
    EXPECT_THAT(listed(), ElementsAre("/other")) << "not before the post";
    world.settle();
    EXPECT_THAT(listed(), ElementsAre("/A", "/B"));
    EXPECT_EQ(world.folderAccess.starts["/A"], 2) << "access is started anew";
}

TEST_F(MusicFolders, DeadBookmarksAreDroppedAndTheRestRestored) {
    world.folderAccess.refused = {"/unplugged"};
    const auto file =
        encodeTexts({base64("bookmark:/unplugged"), base64("of another program"), base64("bookmark:/Music")});
    world.support().write("Orvalen/folders.json", file);
    loadFolderBookmarks(world.view);
    world.settle();
    EXPECT_THAT(listed(), ElementsAre("/Music"));
    EXPECT_EQ(world.support().read("Orvalen/folders.json"), file);
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

TEST_F(MusicFolders, AFileOfAnotherShapeLeavesTheListAlone) {
    const std::string good = "\"" + base64("bookmark:/Music") + "\"";
    const std::string files[] = {"",
                                 "{}",
                                 "null",
                                 "music",
                                 good,
                                 "[" + good,
                                 "[" + good + ", 7]",
                                 "[" + good + ", null]",
                                 "[" + good + ", \"no Base64!\"]",
                                 "[[" + good + "]]",
                                 "[\"\xFF\"]"};
    for (const std::string& file : files) {
        world.view.musicFolderURLs.set({{"/kept"}});
        world.support().write("Orvalen/folders.json", file);
        loadFolderBookmarks(world.view);
        world.settle();
        EXPECT_THAT(listed(), ElementsAre("/kept")) << file;
    }
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

TEST_F(MusicFolders, AnEmptySavedListEmptiesTheList) {
    for (const char* file : {"[]", " [ ]\n", "[\"" /* of a bookmark without bytes */ "\"]"}) {
        world.view.musicFolderURLs.set({{"/gone"}});
        world.support().write("Orvalen/folders.json", file);
        loadFolderBookmarks(world.view);
        world.settle();
        EXPECT_THAT(listed(), IsEmpty()) << file;
    }
}

TEST_F(MusicFolders, EscapedSlashesAreRead) {
    std::string text = base64("bookmark:/Musi?>");
    ASSERT_NE(text.find('/'), std::string::npos) << text;
    text.replace(text.find('/'), 1, "\\/");
    world.support().write("Orvalen/folders.json", "[\"" + text + "\"]");
    loadFolderBookmarks(world.view);
    world.settle();
    EXPECT_THAT(listed(), ElementsAre("/Musi?>"));
}

TEST_F(MusicFolders, AFailedSaveIsOneLine) {
    std::filesystem::create_directories(world.support().path("Orvalen/folders.json"));
    saveFolderBookmarks(world.view);
    EXPECT_THAT(world.console.lines(), ElementsAre("Error saving folder bookmarks: Is a directory"));
}

TEST_F(MusicFolders, AFullDiskIsOneLine) {
    world.support().makeFolder("Orvalen");
    std::filesystem::create_symlink("/dev/full", world.support().path("Orvalen/folders.json"));
    saveFolderBookmarks(world.view);
    EXPECT_THAT(world.console.lines(), ElementsAre("Error saving folder bookmarks: No space left on device"));
}

TEST_F(MusicFolders, WithoutASupportFolderNothingIsSavedOrSaid) {
    world.userFolders.folder.reset();
    add({"/Music"});
    loadFolderBookmarks(world.view);
    world.settle();
    EXPECT_THAT(listed(), ElementsAre("/Music"));
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

TEST(SupportFolder, IsCreatedWithItsParentsAndNamesTheFile) {
    TemporaryFolder folder;
    FakeUserFolders folders;
    folders.folder = folder.path("not/there/yet");
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(supportFileURL(folders, "session.orvs"),
                  Location{folder.path("not/there/yet/Orvalen/session.orvs")});
    EXPECT_TRUE(std::filesystem::is_directory(folder.path("not/there/yet/Orvalen")));
    EXPECT_FALSE(folder.exists("not/there/yet/Orvalen/session.orvs"));
}

TEST(SupportFolder, StillNamesTheFileWhereItCannotBeCreated) {
    TemporaryFolder folder;
    FakeUserFolders folders;
    folders.folder = folder.write("a file");
    EXPECT_EQ(supportFileURL(folders, "library.orvl"), Location{folder.path("a file/Orvalen/library.orvl")});
    folders.folder.reset();
    EXPECT_EQ(supportFileURL(folders, "library.orvl"), std::nullopt);
}

} // namespace
} // namespace orvalen::test
