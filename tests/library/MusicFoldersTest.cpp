#include "library/MusicFolders.h"

#include "core/Base64.h"
#include "core/Json.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MusicFolders : public testing::Test {
protected:
    std::vector<std::string> listed() { return pathsOf(test.view.musicFolderURLs.get()); }
    std::string saved() { return test.support().read("Orvalen/folders.json"); }
    /// Returns the content of "folders.json" for these paths.
    static std::string fileOf(std::vector<std::string> paths) {
        for (std::string& path : paths)
            path = base64("bookmark:" + path);
        return encodeTexts(paths);
    }
    void add(std::vector<std::string> paths) {
        test.dialogs.willOpen(std::move(paths));
        addMusicLocations(test.view);
    }

    TestPlatform test;
};

TEST_F(MusicFolders, TheDialogAsksForFoldersAndAudioFilesTogether) {
    add({});
    ASSERT_EQ(test.dialogs.opened.size(), 1U);
    const OpenOptions& options = test.dialogs.opened.front();
    EXPECT_TRUE(options.files && options.folders && options.several);
    EXPECT_THAT(options.types.families, IsEmpty());
    EXPECT_THAT(options.types.extensions, ElementsAre("mp3", "m4a", "wav", "aiff", "aif"));
    EXPECT_EQ(options.prompt, "Add Music Folders or Audio Files");
    EXPECT_FALSE(test.support().exists("Orvalen/folders.json")) << "a cancelled dialog saves nothing";
}

TEST_F(MusicFolders, AddingListsEachLocationOnceAndSavesTheList) {
    add({"/Music/House", "/Music/Café", "/Music/House"});
    EXPECT_THAT(listed(), ElementsAre("/Music/House", "/Music/Café"));
    add({"/Music/Cafe\u0301", "/Music/Intro.wav"}); // the same folder with a decomposed accent
    EXPECT_THAT(listed(), ElementsAre("/Music/House", "/Music/Café", "/Music/Intro.wav"));
    EXPECT_EQ(saved(), fileOf(listed()));
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(MusicFolders, WhatCannotBeReadIsSkippedAndWhatHasNoBookmarkStaysForThisRun) {
    test.folderAccess.refused = {"/locked"};
    add({"/locked"});
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_EQ(saved(), "[]") << "the list is saved all the same";
    test.folderAccess.withoutBookmark = {"/stick"};
    add({"/locked", "/stick", "/Music"});
    EXPECT_THAT(listed(), ElementsAre("/stick", "/Music"));
    EXPECT_EQ(saved(), fileOf({"/Music"}));
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(MusicFolders, RemovingTakesEveryEqualEntryAndSavesAndClearingIsForThisRunOnly) {
    test.view.musicFolderURLs.set({{"/A"}, {"/Café"}, {"/B"}, {"/Cafe\u0301"}});
    removeMusicLocation(test.view, test.view.musicFolderURLs.get()[1]);
    EXPECT_THAT(listed(), ElementsAre("/A", "/B"));
    EXPECT_EQ(saved(), fileOf(listed()));
    clearMusicLocations(test.view);
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_EQ(saved(), fileOf({"/A", "/B"}));
}

TEST_F(MusicFolders, LoadingReplacesTheListByAQueuedPostOfWhatCanBeRead) {
    test.folderAccess.refused = {"/deleted", "/media/stick"};
    test.folderAccess.away = {"/media/stick"};
    test.view.musicFolderURLs.set({{"/other"}});
    test.support().write(
        "Orvalen/folders.json",
        encodeTexts({base64("bookmark:/deleted"), base64("bookmark:/media/stick"),
                     base64("another program's"), base64("bookmark:/A"), base64("bookmark:/B")}));
    loadFolderBookmarks(test.view);
    EXPECT_THAT(listed(), ElementsAre("/other")) << "not before the post";
    test.settle();
    EXPECT_THAT(listed(), ElementsAre("/media/stick", "/A", "/B"));
    saveFolderBookmarks(test.view);
    EXPECT_EQ(saved(), fileOf({"/media/stick", "/A", "/B"}));
    test.support().write("Orvalen/folders.json", "\xEF\xBB\xBF" + fileOf({"/B"}));
    loadFolderBookmarks(test.view);
    test.settle();
    EXPECT_THAT(listed(), ElementsAre("/B")) << "with a byte-order mark";
    EXPECT_EQ(test.folderAccess.starts["/A"], 1);
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(MusicFolders, AFileOfAnotherShapeLeavesTheListAlone) {
    const std::string good = "\"" + base64("bookmark:/Music") + "\"";
    for (const std::string& file : {std::string("{}"), "[" + good, "[" + good + ", \"no Base64!\"]"}) {
        test.view.musicFolderURLs.set({{"/kept"}});
        test.support().write("Orvalen/folders.json", file);
        loadFolderBookmarks(test.view);
        test.settle();
        EXPECT_THAT(listed(), ElementsAre("/kept")) << file;
    }
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

} // namespace
} // namespace orvalen::test
