#include "library/LibraryFile.h"

#include "core/Files.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

const std::string trackJson =
    R"({"title":"Last Train Home","artist":"Night Band","genre":"","path":"\/Music\/a.mp3","bpm":123})";

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

class LibraryFile : public testing::Test {
protected:
    std::vector<Track> tracks() const {
        const LibraryIndex& index = world.view.trackDict.get();
        std::vector<Track> result;
        for (std::size_t position = 0; position < index.trackCount(); ++position)
            result.push_back(index.track(position).toTrack());
        return result;
    }
    std::vector<std::string> folders() const {
        std::vector<std::string> paths;
        for (const Location& location : world.view.musicFolderURLs.get())
            paths.push_back(location.path);
        return paths;
    }
    /// A library that stands before something else is loaded.
    void fill() {
        world.view.trackDict.set(buildIndex(std::vector<Track>{kept}));
        world.view.trackCount.set(1);
        world.view.musicFolderURLs.set({{"/kept"}});
        world.database().replacePreferredMatches({{"kept", "/kept.mp3"}});
    }
    void expectUnchanged(const std::string& file) {
        EXPECT_THAT(tracks(), ElementsAre(kept)) << file.substr(0, 200);
        EXPECT_EQ(world.view.trackCount.get(), 1);
        EXPECT_THAT(folders(), ElementsAre("/kept")) << file.substr(0, 200);
        EXPECT_THAT(world.database().allPreferredMatches(), ElementsAre(Pair("kept", "/kept.mp3")))
            << file.substr(0, 200);
        EXPECT_THAT(world.console.lines(), IsEmpty());
    }

    const Track kept = track("Kept", "Song", 100);
    TestPlatform world;
};

TEST_F(LibraryFile, WhatIsSavedComesBackInAnEmptyProgram) {
    const std::vector<Track> saved = {
        track("Night Band", "Last Train Home", 123), track("Señor \"Ritmo\"", "A\\B/C\t", 0),
        track("日本", "🎵 \u2028 \x01", {}, "/Musik/Größe.mp3"), track("Night Band", "Last train home!", -5)};
    world.view.trackDict.set(buildIndex(saved));
    world.view.musicFolderURLs.set({{"/Music"}, {"/Musik/Größe"}});
    world.database().replacePreferredMatches({{"night band last train home", "/O'Brien/ü.mp3"}, {"", ""}});
    const std::string path = world.support().path("copy.orvl");
    ASSERT_TRUE(writeLibraryFile(world.view, {path}).has_value());

    TestPlatform empty;
    applyLibraryFile(empty.view, world.support().read("copy.orvl"));
    const LibraryIndex& index = empty.view.trackDict.get();
    ASSERT_EQ(index.trackCount(), 4U);
    EXPECT_EQ(empty.view.trackCount.get(), 4);
    for (std::size_t position = 0; position < 4; ++position) {
        EXPECT_EQ(index.track(position), world.view.trackDict.get().track(position));
        EXPECT_EQ(index.key(position), world.view.trackDict.get().key(position));
    }
    EXPECT_EQ(empty.database().allPreferredMatches(), world.database().allPreferredMatches());
    EXPECT_EQ(empty.view.musicFolderURLs.get(), world.view.musicFolderURLs.get());
    EXPECT_EQ(empty.folderAccess.starts["/Music"], 1);
}

TEST_F(LibraryFile, IsPrettyPrintedWithItsThreeMembers) {
    fill();
    const std::string path = world.support().path("copy.orvl");
    ASSERT_TRUE(writeLibraryFile(world.view, {path}).has_value());
    EXPECT_EQ(world.support().read("copy.orvl"), R"({
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

TEST_F(LibraryFile, AnEmptyLibraryIsWrittenAndReadAsEmpty) {
    const std::string path = world.support().path("copy.orvl");
    ASSERT_TRUE(writeLibraryFile(world.view, {path}).has_value());
    fill();
    applyLibraryFile(world.view, world.support().read("copy.orvl"));
    EXPECT_THAT(tracks(), IsEmpty());
    EXPECT_EQ(world.view.trackCount.get(), 0);
    EXPECT_THAT(world.database().allPreferredMatches(), IsEmpty());
    EXPECT_THAT(folders(), ElementsAre("/kept"));
}

TEST_F(LibraryFile, AbsentAndZeroTempoAreToldApart) {
    applyLibraryFile(world.view, R"({"tracks":[
        {"title":"a","artist":"","genre":"","path":"/a","bpm":0},
        {"title":"b","artist":"","genre":"","path":"/b","bpm":null},
        {"title":"c","artist":"","genre":"","path":"/c"}]})");
    ASSERT_EQ(tracks().size(), 3U);
    EXPECT_EQ(tracks()[0].bpm, 0);
    EXPECT_EQ(tracks()[1].bpm, std::nullopt);
    EXPECT_EQ(tracks()[2].bpm, std::nullopt);
}

TEST_F(LibraryFile, ADocumentOfAnotherShapeChangesNothingSilently) {
    const std::string others = R"("preferred":[{"key":"k","path":"/p"}],"folders":["/f"])";
    const std::string good = "{\"tracks\":[" + trackJson + "]," + others + "}";
    const auto withTrack = [&](const std::string& one) {
        return "{\"tracks\":[" + trackJson + "," + one + "]," + others + "}";
    };
    const std::string files[] = {
        "",
        " ",
        "null",
        "[]",
        "no JSON",
        "\xEF\xBB",
        "[" + good + "]",
        good + good,
        good.substr(0, good.size() - 1),
        good.substr(0, good.size() / 2),
        "{" + others + "}",
        R"({"tracks":null,)" + others + "}",
        R"({"tracks":{},)" + others + "}",
        withTrack("[]"),
        withTrack("null"),
        withTrack(R"("track")"),
        withTrack(R"({"title":"t","artist":"a","path":"/p"})"),            // no genre
        withTrack(R"({"title":"t","artist":"a","genre":null,"path":""})"), // required, so not null
        withTrack(R"({"title":1,"artist":"a","genre":"","path":"/p"})"),
        withTrack(R"({"title":"t","artist":"a","genre":"","path":"/p","bpm":"128"})"),
        withTrack(R"({"title":"t","artist":"a","genre":"","path":"/p","bpm":128.5})"),
        withTrack(R"({"title":"t","artist":"a","genre":"","path":"/p","bpm":true})"),
        withTrack(R"({"title":"t","artist":"a","genre":"","path":"/p","bpm":9223372036854775808})"),
        withTrack("{\"title\":\"\xFF\",\"artist\":\"a\",\"genre\":\"\",\"path\":\"/p\"}"),
        withTrack(R"({"title":"\uD800","artist":"a","genre":"","path":"/p"})"), // half a character
        "{\"tracks\":" + repeated("[", 50) + repeated("]", 50) + "," + others + "}",
        repeated("[", 100'000),
        repeated("{\"tracks\":", 100'000),
    };
    fill();
    for (const std::string& file : files) {
        applyLibraryFile(world.view, file);
        expectUnchanged(file);
    }
    applyLibraryFile(world.view, good);
    EXPECT_EQ(tracks().size(), 1U);
    EXPECT_THAT(folders(), ElementsAre("/kept", "/f"));
}

TEST_F(LibraryFile, MembersAndKeysThatNobodyKnowsAreIgnoredHoweverDeep) {
    std::string file = trackJson;
    file.insert(1, "\"more\":" + repeated("[", 50) + "1" + repeated("]", 50) + ",");
    applyLibraryFile(world.view, "{\"version\":2,\"tracks\":[" + file + "]}");
    EXPECT_EQ(tracks().size(), 1U);
}

TEST_F(LibraryFile, PreferredMatchesOfAnotherShapeKeepTheTable) {
    struct Case {
        std::string member;
        PreferredMatches expected;
    };
    const PreferredMatches unchanged = {{"kept", "/kept.mp3"}};
    const Case cases[] = {
        {"", unchanged},
        {R"(,"preferred":null)", unchanged},
        {R"(,"preferred":{"k":"/p"})", unchanged}, // as the automatic backup writes them
        {R"(,"preferred":["k"])", unchanged},
        {R"(,"preferred":[{"key":"k","path":"/p"},{"key":"x","path":null}])", unchanged},
        {R"(,"preferred":[{"key":"k","path":"/p","more":1}])", unchanged},
        {R"(,"preferred":[])", {}},
        {R"(,"preferred":[{"key":"k","path":"/p","more":"text"}])", {{"k", "/p"}}},
        {R"(,"preferred":[{"key":"k"},{"path":"/p"},{},{"key":"a","path":"/1"},{"key":"a","path":"/2"}])",
         {{"a", "/2"}}},
        {",\"preferred\":[{\"key\":\"gar\u00E7on\",\"path\":\"/1\"},{\"key\":\"garc\u0327on\",\"path\":\"/"
         "2\"}]",
         {{"garçon", "/2"}}},
    };
    for (const auto& [member, expected] : cases) {
        fill();
        applyLibraryFile(world.view, "{\"tracks\":[" + trackJson + "]" + member + "}");
        EXPECT_EQ(world.database().allPreferredMatches(), expected) << member;
        EXPECT_EQ(tracks().size(), 1U);
        EXPECT_EQ(tracks().front().title, "Last Train Home") << member;
    }
}

TEST_F(LibraryFile, AKeyWithItsAccentsApartIsFoundByTheKeyOfAWantedLine) {
    applyLibraryFile(world.view,
                     "{\"tracks\":[],\"preferred\":[{\"key\":\"\u1112\u1161\u11AB\",\"path\":\"/1\"}]}");
    EXPECT_EQ(world.database().preferredPath("\uD55C"), "/1");
}

TEST_F(LibraryFile, FoldersAreAppendedWhenTheyCanBeReadAndAllAreTexts) {
    struct Case {
        std::string member;
        std::vector<std::string> expected;
    };
    world.folderAccess.refused = {"/gone"};
    const Case cases[] = {
        {"", {"/kept"}},
        {R"(,"folders":"/a")", {"/kept"}},
        {R"(,"folders":["/a",1])", {"/kept"}},
        {R"(,"folders":["/a",null])", {"/kept"}},
        {R"(,"folders":[])", {"/kept"}},
        {R"(,"folders":["/b","/gone","/a","/kept","/a"])", {"/kept", "/b", "/a", "/kept", "/a"}},
    };
    for (const auto& [member, expected] : cases) {
        fill();
        applyLibraryFile(world.view, "{\"tracks\":[]" + member + "}");
        EXPECT_EQ(folders(), expected) << member;
    }
    EXPECT_FALSE(world.support().exists("Orvalen/folders.json"));
}

TEST_F(LibraryFile, SavingTellsWhereAndSavesTheFoldersToo) {
    fill();
    savePersistentLibrary(world.view);
    EXPECT_THAT(world.console.lines(), ElementsAre("✅ Persistent library saved to " +
                                                   world.support().path("Orvalen/library.orvl")));
    EXPECT_TRUE(world.support().exists("Orvalen/folders.json"));
}

TEST_F(LibraryFile, AFailedSaveTellsWhyAndStillSavesTheFolders) {
    world.support().makeFolder("Orvalen/library.orvl");
    savePersistentLibrary(world.view);
    EXPECT_THAT(world.console.lines(), ElementsAre("❌ Failed to save persistent library: Is a directory"));
    EXPECT_TRUE(world.support().exists("Orvalen/folders.json"));
}

TEST_F(LibraryFile, AFullDiskTellsWhy) {
    world.support().makeFolder("Orvalen");
    std::filesystem::create_symlink("/dev/full", world.support().path("Orvalen/library.orvl"));
    savePersistentLibrary(world.view);
    EXPECT_EQ(world.console.lines().at(0), "❌ Failed to save persistent library: No space left on device");
}

TEST_F(LibraryFile, WithoutASupportFolderNothingIsSavedOrSaid) {
    world.userFolders.folder.reset();
    savePersistentLibrary(world.view);
    loadPersistentLibrary(world.view);
    removeSavedLibrary(world.view);
    world.settle();
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

TEST_F(LibraryFile, ASupportFolderThatCannotBeCreatedIsTwoLines) {
    world.userFolders.folder = world.support().write("a file");
    savePersistentLibrary(world.view);
    EXPECT_THAT(world.console.lines(), testing::Contains("Error saving folder bookmarks: Not a directory"));
    EXPECT_THAT(world.console.lines(),
                testing::Contains("❌ Failed to save persistent library: Not a directory"));
}

TEST_F(LibraryFile, TheStartRestoresTheLibraryAndThenTheSavedFolders) {
    fill();
    savePersistentLibrary(world.view);
    world.support().write("Orvalen/folders.json", "[]");
    world.view.trackDict.set({});
    world.view.musicFolderURLs.set({});
    loadPersistentLibrary(world.view);
    EXPECT_THAT(tracks(), ElementsAre(kept));
    EXPECT_EQ(world.view.trackCount.get(), 1);
    EXPECT_THAT(folders(), ElementsAre("/kept")) << "the file's folders, until the queued list arrives";
    world.settle();
    EXPECT_THAT(folders(), IsEmpty());
}

TEST_F(LibraryFile, TheStartWithoutSavedFoldersKeepsThoseOfTheLibrary) {
    fill();
    savePersistentLibrary(world.view);
    std::filesystem::remove(world.support().path("Orvalen/folders.json"));
    world.view.musicFolderURLs.set({});
    loadPersistentLibrary(world.view);
    world.settle();
    EXPECT_THAT(folders(), ElementsAre("/kept"));
}

TEST_F(LibraryFile, AFirstStartFindsNothingAndSaysNothing) {
    loadPersistentLibrary(world.view);
    world.settle();
    EXPECT_TRUE(world.view.trackDict.get().empty());
    EXPECT_THAT(world.console.lines(), IsEmpty());
    std::filesystem::create_directory(world.support().path("Orvalen/library.orvl"));
    loadPersistentLibrary(world.view);
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

TEST_F(LibraryFile, BackupAsksWhereAndTells) {
    fill();
    backupScannedLibrary(world.view);
    EXPECT_THAT(world.console.lines(), IsEmpty()) << "cancelled";
    ASSERT_EQ(world.dialogs.saved.size(), 1U);
    EXPECT_EQ(world.dialogs.saved[0].proposedName, "scanned_library.orvl");
    EXPECT_THAT(world.dialogs.saved[0].types.extensions, ElementsAre("orvl"));
    EXPECT_THAT(world.dialogs.saved[0].types.families, IsEmpty());

    const std::string copy = world.support().write("copy.orvl", std::string(100'000, 'x')); // replaced whole
    const std::string impossible = world.support().makeFolder("folder");
    world.dialogs.willSaveTo(copy);
    backupScannedLibrary(world.view);
    world.dialogs.willSaveTo(impossible);
    backupScannedLibrary(world.view);
    EXPECT_THAT(world.console.lines(), ElementsAre("✅ Library backup saved to " + copy,
                                                   "❌ Failed to backup scanned library: Is a directory"));
    EXPECT_FALSE(world.support().exists("Orvalen/library.orvl"));

    TestPlatform other;
    other.dialogs.willOpen({copy});
    loadScannedLibrary(other.view);
    ASSERT_EQ(other.view.trackDict.get().trackCount(), 1U);
    EXPECT_EQ(other.view.trackDict.get().track(0), TrackView(kept));
}

TEST_F(LibraryFile, LoadingAsksForOneFileAndIsSilentWhateverComes) {
    fill();
    loadScannedLibrary(world.view);
    for (const char* path : {"/gone.orvl", "/dev", "/dev/null"}) {
        world.dialogs.willOpen({path});
        loadScannedLibrary(world.view);
        expectUnchanged(path);
    }
    const OpenOptions& options = world.dialogs.opened.at(0);
    EXPECT_TRUE(options.files);
    EXPECT_FALSE(options.folders);
    EXPECT_FALSE(options.several);
    EXPECT_THAT(options.types.extensions, ElementsAre("orvl"));
}

TEST_F(LibraryFile, LoadingTwiceAppendsTheFoldersTwice) {
    const std::string file = world.support().write("copy.orvl", R"({"tracks":[],"folders":["/a"]})");
    for (int time = 0; time < 2; ++time) {
        world.dialogs.willOpen({file});
        loadScannedLibrary(world.view);
    }
    EXPECT_THAT(folders(), ElementsAre("/a", "/a"));
}

TEST_F(LibraryFile, RemovingDeletesTheFileAndEmptiesIndexAndChoicesOnly) {
    fill();
    savePersistentLibrary(world.view);
    for (int time = 0; time < 2; ++time) { // the second time without a file
        removeSavedLibrary(world.view);
        EXPECT_FALSE(world.support().exists("Orvalen/library.orvl"));
        EXPECT_TRUE(world.view.trackDict.get().empty());
        EXPECT_EQ(world.view.trackCount.get(), 0);
        EXPECT_THAT(world.database().allPreferredMatches(), IsEmpty());
        EXPECT_THAT(folders(), ElementsAre("/kept"));
        EXPECT_TRUE(world.support().exists("Orvalen/folders.json"));
        EXPECT_TRUE(world.support().exists("orvalen.sqlite"));
        fill();
    }
}

TEST_F(LibraryFile, AnAutomaticBackupLoadsItsTracks) {
    fill();
    world.database().exportLibrarySnapshot({world.support().path("backup.orvl")},
                                           buildIndex(std::vector<Track>{track("No", "Tempo"), kept}));
    world.view.musicFolderURLs.set({});
    applyLibraryFile(world.view, world.support().read("backup.orvl"));
    EXPECT_THAT(tracks(), UnorderedElementsAre(track("No", "Tempo", 0), kept));
    EXPECT_THAT(world.database().allPreferredMatches(), ElementsAre(Pair("kept", "/kept.mp3")));
    EXPECT_THAT(folders(), IsEmpty());
}

} // namespace
} // namespace orvalen::test
