#include "library/MusicFolders.h"

#include "core/Base64.h"
#include "core/Json.h"
#include "support/TestPlatform.h"

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
    std::string saved() { return world.support().read("Orvalen/folders.json"); }
    /// The file of bookmarks of these paths.
    static std::string fileOf(std::vector<std::string> paths) {
        for (std::string& path : paths)
            path = base64("bookmark:" + path);
        return encodeTexts(paths);
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
    EXPECT_TRUE(options.files && options.folders && options.several);
    EXPECT_THAT(options.types.families, IsEmpty());
    EXPECT_THAT(options.types.extensions, ElementsAre("mp3", "m4a", "wav", "aiff", "aif"));
    EXPECT_EQ(options.prompt, "Add Music Folders or Audio Files");
    EXPECT_FALSE(world.support().exists("Orvalen/folders.json")) << "a cancelled dialog saves nothing";
}

TEST_F(MusicFolders, AddingListsEachLocationOnceAndSavesTheList) {
    add({"/Music/House", "/Music/Café", "/Music/House"});
    EXPECT_THAT(listed(), ElementsAre("/Music/House", "/Music/Café"));
    add({"/Music/Cafe\u0301", "/Music/Intro.wav"}); // the same folder with its accent apart
    EXPECT_THAT(listed(), ElementsAre("/Music/House", "/Music/Café", "/Music/Intro.wav"));
    EXPECT_EQ(saved(), fileOf(listed()));
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

TEST_F(MusicFolders, WhatCannotBeReadIsSkippedAndTheListSavedAllTheSame) {
    world.folderAccess.refused = {"/locked"};
    add({"/locked"});
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_EQ(saved(), "[]");
    add({"/locked", "/Music"});
    EXPECT_THAT(listed(), ElementsAre("/Music"));
}

TEST_F(MusicFolders, RemovingTakesEveryEqualEntryAndSaves) {
    world.view.musicFolderURLs.set({{"/A"}, {"/Café"}, {"/B"}, {"/Cafe\u0301"}});
    removeMusicLocation(world.view, world.view.musicFolderURLs.get()[1]);
    EXPECT_THAT(listed(), ElementsAre("/A", "/B"));
    EXPECT_EQ(saved(), fileOf(listed()));
}

TEST_F(MusicFolders, ClearingIsForThisRunOnly) {
    add({"/Music"});
    clearMusicLocations(world.view);
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_EQ(saved(), fileOf({"/Music"}));
}

TEST_F(MusicFolders, ALocationWithoutBookmarkStaysForThisRun) {
    world.folderAccess.withoutBookmark = {"/stick"};
    add({"/stick", "/Music"});
    EXPECT_THAT(listed(), ElementsAre("/stick", "/Music"));
    EXPECT_EQ(saved(), fileOf({"/Music"}));
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

TEST_F(MusicFolders, LoadingReplacesTheListByAQueuedPostOfWhatCanBeRead) {
    world.folderAccess.refused = {"/deleted", "/media/stick"};
    world.folderAccess.away = {"/media/stick"};
    world.view.musicFolderURLs.set({{"/other"}});
    world.support().write(
        "Orvalen/folders.json",
        encodeTexts({base64("bookmark:/deleted"), base64("bookmark:/media/stick"),
                     base64("another program's"), base64("bookmark:/A"), base64("bookmark:/B")}));
    loadFolderBookmarks(world.view);
    EXPECT_THAT(listed(), ElementsAre("/other")) << "not before the post";
    world.settle();
    EXPECT_THAT(listed(), ElementsAre("/media/stick", "/A", "/B"));
    saveFolderBookmarks(world.view);
    EXPECT_EQ(saved(), fileOf({"/media/stick", "/A", "/B"}));
    world.support().write("Orvalen/folders.json", "\xEF\xBB\xBF" + fileOf({"/B"}));
    loadFolderBookmarks(world.view);
    world.settle();
    EXPECT_THAT(listed(), ElementsAre("/B")) << "with a byte-order mark";
    EXPECT_EQ(world.folderAccess.starts["/A"], 1);
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

TEST_F(MusicFolders, AFileOfAnotherShapeLeavesTheListAlone) {
    const std::string good = "\"" + base64("bookmark:/Music") + "\"";
    for (const std::string& file : {std::string("{}"), "[" + good, "[" + good + ", \"no Base64!\"]"}) {
        world.view.musicFolderURLs.set({{"/kept"}});
        world.support().write("Orvalen/folders.json", file);
        loadFolderBookmarks(world.view);
        world.settle();
        EXPECT_THAT(listed(), ElementsAre("/kept")) << file;
    }
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

} // namespace
} // namespace orvalen::test
