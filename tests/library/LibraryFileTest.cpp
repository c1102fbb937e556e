#include "library/LibraryFile.h"

#include "core/LibraryIndexBuilder.h"
#include "library/EarlierChoices.h"
#include "library/MusicFolders.h"
#include "matching/MatchReview.h"
#include "support/Builders.h"
#include "support/OtherProgram.h"
#include "support/TestPlatform.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;
using testing::UnorderedElementsAre;

class LibraryFile : public testing::Test {
protected:
    std::vector<Track> tracks() const { return tracksOf(test.view.trackDict.get()); }
    std::vector<std::string> folders() const { return pathsOf(test.view.musicFolderURLs.get()); }
    /// Sets a library before another one is loaded.
    void fill() {
        test.view.trackDict.set(buildIndex(std::vector<Track>{kept}));
        test.view.trackCount.set(1);
        test.view.musicFolderURLs.set({{"/kept"}});
        test.database().replacePreferredMatches({{"kept", "/kept.mp3"}});
    }
    void expectUnchanged(const std::string& file) {
        EXPECT_THAT(tracks(), ElementsAre(kept)) << file.substr(0, 200);
        EXPECT_EQ(test.view.trackCount.get(), 1);
        EXPECT_THAT(folders(), ElementsAre("/kept")) << file.substr(0, 200);
        EXPECT_THAT(test.database().allPreferredMatches(), ElementsAre(Pair("kept", "/kept.mp3")))
            << file.substr(0, 200);
        EXPECT_THAT(test.console.lines(), IsEmpty());
    }

    const Track kept = track("Kept", "Song", 100);
    TestPlatform test;
};

TEST_F(LibraryFile, WhatIsSavedComesBackInAnEmptyProgramAndIsIndented) {
    test.view.trackDict.set(buildIndex(std::vector{track("Señor \"Ritmo\"", "A\\B/C\t", 0),
                                                   track("日本", "🎵 \u2028 \x01", {}, "/Größe.mp3")}));
    test.view.musicFolderURLs.set({{"/Music"}, {"/Musik/Größe"}});
    test.database().replacePreferredMatches({{"night band last train home", "/O'Brien/ü.mp3"}, {"", ""}});
    ASSERT_TRUE(writeLibraryFile(test.view, {test.support().path("copy.orvl")}).has_value());

    TestPlatform empty;
    applyLibraryFile(empty.view, test.support().read("copy.orvl"));
    EXPECT_EQ(empty.view.trackCount.get(), 2);
    EXPECT_EQ(tracksOf(empty.view.trackDict.get()), tracks());
    EXPECT_EQ(empty.database().allPreferredMatches(), test.database().allPreferredMatches());
    EXPECT_EQ(empty.view.musicFolderURLs.get(), test.view.musicFolderURLs.get());
    EXPECT_EQ(empty.folderAccess.starts["/Music"], 1);

    fill();
    ASSERT_TRUE(writeLibraryFile(test.view, {test.support().path("copy.orvl")}).has_value());
    EXPECT_EQ(test.support().read("copy.orvl"), R"({
  "tracks": [
    {
      "title": "Song",
      "artist": "Kept",
      "genre": "",
      "path": "/Music/Kept - Song.mp3",
      "bpm": 100
    }
  ],
  "preferred": [
    {
      "key": "kept",
      "path": "/kept.mp3"
    }
  ],
  "folders": [
    "/kept"
  ]
})");
}

TEST_F(LibraryFile, ADocumentOfAnotherShapeChangesNothingSilently) {
    const std::string trackJson = R"({"title":"T","artist":"A","genre":"","path":"\/a.mp3","bpm":123})";
    const std::string others = R"("preferred":[{"key":"k","path":"/p"}],"folders":["/f"])";
    const std::string good = "{\"tracks\":[" + trackJson + "]," + others + "}";
    const auto withTrack = [&](const std::string& one) {
        return "{\"tracks\":[" + trackJson + "," + one + "]," + others + "}";
    };
    const std::string files[] = {
        "",
        "[" + good + "]",
        good + good,
        good.substr(0, good.size() - 1),
        "{" + others + "}",
        R"({"tracks":{},)" + others + "}",
        withTrack("null"),
        withTrack(R"({"title":"t","artist":"a","path":"/p"})"), // no genre
        withTrack(R"({"title":"t","artist":"a","genre":"","path":"/p","bpm":128.5})"),
        withTrack("{\"title\":\"\xFF\",\"artist\":\"a\",\"genre\":\"\",\"path\":\"/p\"}"),
        std::string(100'000, '['),
    };
    fill();
    for (const std::string& file : files) {
        applyLibraryFile(test.view, file);
        expectUnchanged(file);
    }
    applyLibraryFile(test.view, good);
    EXPECT_EQ(tracks().size(), 1U);
    EXPECT_THAT(folders(), ElementsAre("/kept", "/f"));
}

TEST_F(LibraryFile, PreferredMatchesAndFoldersOfAnotherShapeAreIgnored) {
    test.folderAccess.refused = {"/gone"};
    const PreferredMatches keptMatches = {{"kept", "/kept.mp3"}};
    const struct {
        const char* members;
        PreferredMatches preferred;
        std::vector<std::string> folders = {"/kept"};
    } cases[] = {
        {"", keptMatches},
        {R"(,"preferred":[{"key":"k","path":"/p"},{"key":"x","path":null}])", keptMatches},
        {R"(,"preferred":[{"key":"k","path":"/p","more":1}])", keptMatches},
        {R"(,"preferred":[])", {}},
        {R"(,"preferred":[{"key":"k"},{"path":"/p"},{},{"key":"a","path":"/1"},{"key":"a","path":"/2"}])",
         {{"a", "/2"}}},
        {",\"preferred\":[{\"key\":\"\u1112\u1161\u11AB\",\"path\":\"/1\"}]", {{"\uD55C", "/1"}}},
        {R"(,"folders":["/a",1])", keptMatches},
        {R"(,"folders":["/b","/gone","/a","/kept","/a"])", keptMatches, {"/kept", "/b", "/a", "/kept", "/a"}},
    };
    for (const auto& c : cases) {
        fill();
        applyLibraryFile(test.view, std::string("{\"tracks\":[]") + c.members + "}");
        EXPECT_EQ(test.database().allPreferredMatches(), c.preferred) << c.members;
        for (const auto& [key, path] : c.preferred)
            EXPECT_EQ(test.database().preferredPath(key), path) << "as the key of a wanted line";
        EXPECT_EQ(folders(), c.folders) << c.members;
        EXPECT_THAT(tracks(), IsEmpty()) << c.members;
    }
    EXPECT_FALSE(test.support().exists("Orvalen/folders.json"));
}

TEST_F(LibraryFile, TheStartRestoresTheLibraryAndThenTheSavedFolders) {
    fill();
    savePersistentLibrary(test.view);
    EXPECT_NE(test.support().read("Orvalen/folders.json"), "[]") << "the folders are saved with it";
    test.support().write("Orvalen/folders.json", "[]");
    test.view.trackDict.set({});
    test.view.musicFolderURLs.set({});
    loadPersistentLibrary(test.view);
    EXPECT_THAT(tracks(), ElementsAre(kept));
    EXPECT_EQ(test.view.trackCount.get(), 1);
    EXPECT_THAT(folders(), ElementsAre("/kept")) << "the file's folders, until the queued list arrives";
    test.settle();
    EXPECT_THAT(folders(), IsEmpty());
}

TEST_F(LibraryFile, AFailedSaveIsOneErrorLineAndTheNextSaveWorks) {
    test.support().makeFolder("Orvalen/library.orvl");
    test.support().makeFolder("Orvalen/folders.json/inside");
    savePersistentLibrary(test.view);
    EXPECT_THAT(test.console.lines(), ElementsAre("❌ Failed to save persistent library: Is a directory",
                                                  "Error saving folder bookmarks: Is a directory"));
    std::filesystem::remove_all(test.support().path("Orvalen"));
    savePersistentLibrary(test.view);
    EXPECT_TRUE(test.support().exists("Orvalen/library.orvl") &&
                test.support().exists("Orvalen/folders.json"));

    test.console.clear();
    test.userFolders.folder = test.support().write("a file") + "/below";
    savePersistentLibrary(test.view);
    EXPECT_THAT(test.console.lines(), Contains(StartsWith("❌ Failed to save persistent library: ")));
    test.console.clear();
    test.userFolders.folder.reset();
    savePersistentLibrary(test.view);
    loadPersistentLibrary(test.view);
    removeSavedLibrary(test.view);
    test.settle();
    EXPECT_THAT(test.console.lines(), IsEmpty()) << "no support folder, nothing to save or to say";
}

TEST_F(LibraryFile, BackupAndLoadAskWhere) {
    fill();
    backupScannedLibrary(test.view); // cancelled
    ASSERT_EQ(test.dialogs.saved.size(), 1U);
    EXPECT_EQ(test.dialogs.saved[0].proposedName, "scanned_library.orvl");
    EXPECT_THAT(test.dialogs.saved[0].types.extensions, ElementsAre("orvl"));
    loadScannedLibrary(test.view); // cancelled
    const OpenOptions& options = test.dialogs.opened.at(0);
    EXPECT_TRUE(options.files && !options.folders && !options.several);
    EXPECT_THAT(options.types.extensions, ElementsAre("orvl"));
    test.dialogs.willOpen({"/gone.orvl"});
    loadScannedLibrary(test.view);
    expectUnchanged("none");

    const std::string copy = test.support().path("copy.orvl");
    test.dialogs.willSaveTo(copy);
    backupScannedLibrary(test.view);
    test.dialogs.willSaveTo(test.support().makeFolder("folder"));
    backupScannedLibrary(test.view);
    EXPECT_THAT(test.console.lines(), ElementsAre("✅ Library backup saved to " + copy,
                                                  "❌ Failed to backup scanned library: Is a directory"));
    test.view.trackDict.set({});
    test.dialogs.willOpen({copy});
    loadScannedLibrary(test.view);
    EXPECT_THAT(tracks(), ElementsAre(kept));

    OtherProgram other(test.support().path("orvalen.sqlite"));
    other.run("BEGIN EXCLUSIVE");
    test.dialogs.willSaveTo(copy);
    test.console.clear();
    backupScannedLibrary(test.view);
    EXPECT_THAT(test.console.lines(),
                ElementsAre("✅ Library backup saved to " + copy,
                            "The preferred matches could not be read and are not in the backup."));
}

TEST_F(LibraryFile, RemovingDeletesTheFileAndEmptiesIndexAndChoicesOnly) {
    for (const bool canDelete : {true, false}) {
        fill();
        const std::string file = test.support().write("Orvalen/library.orvl");
        if (!canDelete) {
            std::filesystem::remove(file);
            test.support().makeFolder("Orvalen/library.orvl/inside");
        }
        removeSavedLibrary(test.view);
        EXPECT_EQ(std::filesystem::exists(file), !canDelete);
        EXPECT_TRUE(test.view.trackDict.get().empty());
        EXPECT_EQ(test.view.trackCount.get(), 0);
        EXPECT_THAT(test.database().allPreferredMatches(), IsEmpty());
        EXPECT_THAT(folders(), ElementsAre("/kept"));
        EXPECT_THAT(test.console.lines(), IsEmpty());
    }
}

TEST_F(LibraryFile, AnAutomaticBackupLoadsItsTracks) {
    fill();
    test.database().exportLibrarySnapshot({test.support().path("backup.orvl")},
                                          buildIndex(std::vector<Track>{track("No", "Tempo"), kept}));
    test.view.musicFolderURLs.set({});
    applyLibraryFile(test.view, test.support().read("backup.orvl"));
    EXPECT_THAT(tracks(), UnorderedElementsAre(track("No", "Tempo", 0), kept));
    EXPECT_THAT(test.database().allPreferredMatches(), ElementsAre(Pair("kept", "/kept.mp3")));
    EXPECT_THAT(folders(), IsEmpty());
}

class EarlierChoices : public testing::Test {
protected:
    /// Returns the choices after the next start.
    const PreferredMatches& afterStart() {
        test.view.earlierChoices.set({});
        loadPersistentLibrary(test.view);
        test.settle();
        return test.view.earlierChoices.get();
    }
    bool hasFile() const { return test.support().exists("Orvalen/earlier_choices.json"); }

    TestPlatform test;
};

TEST_F(EarlierChoices, SurviveTheStartThatTakesThemOutOfTheTable) {
    test.database().savePreferredMatch("scanned", "/s.mp3");
    savePersistentLibrary(test.view);
    EXPECT_THAT(afterStart(), IsEmpty());
    EXPECT_FALSE(hasFile());

    test.database().savePreferredMatch("later", "/l.mp3");
    test.database().savePreferredMatch("scanned", "/s2.mp3");
    EXPECT_EQ(afterStart(), (PreferredMatches{{"later", "/l.mp3"}, {"scanned", "/s2.mp3"}}));
    EXPECT_EQ(test.database().allPreferredMatches(), (PreferredMatches{{"scanned", "/s.mp3"}}));

    test.database().savePreferredMatch("later", "/l2.mp3");
    const PreferredMatches merged = {{"later", "/l2.mp3"}, {"scanned", "/s2.mp3"}};
    EXPECT_EQ(afterStart(), merged) << "the later choice for a key, with the earlier ones for others";
    EXPECT_EQ(afterStart(), merged);
    test.console.clear();
}

TEST_F(EarlierChoices, EndWithANewChoiceOrWithTheLibrary) {
    test.support().write("Orvalen/earlier_choices.json",
                         R"({"preferred":[{"key":"a t","path":"/1"},{"key":"b t","path":"/2"}]})");
    loadEarlierChoices(test.view);
    test.view.matchedTracks.set({row("A", "T", {track("A", "T", {}, "/1"), track("A", "T", {}, "/3")})});
    chooseOption(test.view, 0, "/3");
    EXPECT_EQ(afterStart(), (PreferredMatches{{"b t", "/2"}}));
    removeSavedLibrary(test.view);
    EXPECT_THAT(test.view.earlierChoices.get(), IsEmpty());
    EXPECT_FALSE(hasFile());
}

TEST_F(EarlierChoices, WhatCannotBeReadIsSilentlyNone) {
    for (const char* bytes : {"", "[]", R"({"preferred":{"a":"/1"}})"}) {
        test.support().write("Orvalen/earlier_choices.json", bytes);
        EXPECT_THAT(afterStart(), IsEmpty()) << bytes;
    }
    test.database().savePreferredMatch("a", "/1");
    OtherProgram other(test.support().path("orvalen.sqlite"));
    other.run("BEGIN EXCLUSIVE");
    keepChoicesReplacedBy(test.view, {});
    EXPECT_THAT(test.view.earlierChoices.get(), IsEmpty());
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

} // namespace
} // namespace orvalen::test
