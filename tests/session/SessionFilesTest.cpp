#include "session/SessionFiles.h"

#include "core/Json.h"
#include "support/Builders.h"
#include "support/SmallDisk.h"
#include "support/TestPlatform.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* rowId = "0F8FAD5B-D9CB-469F-A165-70867728950E";

MatchedTrack fullRow() {
    MatchedTrack result =
        row("Мумий Тролль", "Владивосток 2000",
            {track("a", "b", 128, "/Müsik/a.mp3"), track("a", "b", {}, "/音楽/a.mp3")}, true);
    result.id = *UUID::parse(rowId);
    result.selectedTrack = result.options.back();
    return result;
}

class SessionFiles : public testing::Test {
protected:
    std::string autoSaveFile() const { return test.support().path("Orvalen/session.orvs"); }
    std::string autoSaved() const { return test.support().read("Orvalen/session.orvs"); }
    std::string savingLine() const { return "Auto-saving session to " + autoSaveFile(); }

    /// A state that no test session holds, so that any change shows.
    void workOn(const std::string& input) {
        view.matchInput.set(input);
        view.matchedTracks.set({row("Night Band", input)});
        view.showResultsPage.set(false);
    }
    bool stillOn(const std::string& input) {
        return view.matchInput.get() == input && view.matchedTracks.get().size() == 1 &&
               view.matchedTracks.get().front().title == input && !view.showResultsPage.get();
    }
    void loadText(const std::string& json) {
        test.console.clear();
        test.dialogs.willOpen({folder.write("session.orvs", json)});
        loadSession(view);
    }

    TestPlatform test;
    ContentView& view = test.view;
    TemporaryFolder folder;
};

TEST_F(SessionFiles, SavesWhatAnotherReaderReads) {
    view.matchInput.set("Night Band – Last \"Train\"\nИван\t/ x");
    view.matchedTracks.set({fullRow(), row("A", "T")});
    test.dialogs.willSaveTo(folder.path("party"));
    saveSession(view);
    EXPECT_EQ(test.dialogs.saved.front().proposedName, "playlist_session.orvs");
    EXPECT_EQ(test.dialogs.saved.front().title + test.dialogs.saved.front().message, "");
    EXPECT_THAT(test.dialogs.saved.front().types.extensions, ElementsAre("orvs"));
    EXPECT_THAT(test.console.lines(), IsEmpty());

    const std::string bytes = folder.read("party");
    EXPECT_EQ(bytes.find_first_of("\n\r"), std::string::npos) << "compact: " << bytes;
    EXPECT_NE(bytes.find(R"("path":"\/Müsik\/a.mp3","bpm":128)"), std::string::npos) << bytes;
    rapidjson::Document document;
    document.Parse(bytes.data(), bytes.size());
    ASSERT_FALSE(document.HasParseError()) << bytes;
    ASSERT_EQ(document.MemberCount(), 2U);
    EXPECT_STREQ(document["matchInput"].GetString(), "Night Band – Last \"Train\"\nИван\t/ x");
    const auto& first = document["matchedTracks"][0];
    EXPECT_STREQ(first["id"].GetString(), rowId);
    EXPECT_STREQ(first["artist"].GetString(), "Мумий Тролль");
    EXPECT_STREQ(first["title"].GetString(), "Владивосток 2000");
    EXPECT_TRUE(first["found"].GetBool());
    EXPECT_TRUE(first["include"].GetBool());
    EXPECT_EQ(first["options"].Size(), 2U);
    EXPECT_EQ(first["options"][0]["bpm"].GetInt64(), 128);
    EXPECT_STREQ(first["selectedTrack"]["path"].GetString(), "/音楽/a.mp3");
    EXPECT_FALSE(first["selectedTrack"].HasMember("bpm"));
    const auto& second = document["matchedTracks"][1];
    EXPECT_FALSE(second.HasMember("selectedTrack"));
    EXPECT_EQ(second["options"].Size(), 0U);
    EXPECT_FALSE(second["found"].GetBool());
}

TEST_F(SessionFiles, BringsBackWhatWasSavedAndTouchesNothingElse) {
    view.matchInput.set("as wanted");
    view.matchedTracks.set({fullRow(), row("A", "T")});
    test.dialogs.willSaveTo(folder.path("party.orvs"));
    saveSession(view);
    workOn("something else");
    view.selectedExportFormat.set("pls");
    view.inputMode.set(InputMode::djep);

    test.dialogs.willOpen({folder.path("party.orvs")});
    loadSession(view);
    EXPECT_TRUE(test.dialogs.opened.front().files);
    EXPECT_FALSE(test.dialogs.opened.front().folders);
    EXPECT_FALSE(test.dialogs.opened.front().several);
    EXPECT_THAT(test.dialogs.opened.front().types.extensions, ElementsAre("orvs"));
    EXPECT_EQ(view.matchInput.get(), "as wanted");
    EXPECT_TRUE(view.showResultsPage.get());
    EXPECT_EQ(view.selectedExportFormat.get(), "pls");
    EXPECT_EQ(view.inputMode.get(), InputMode::djep);
    ASSERT_EQ(view.matchedTracks.get().size(), 2U);
    const MatchedTrack expected = fullRow();
    const MatchedTrack& loaded = view.matchedTracks.get().front();
    EXPECT_EQ(loaded.id, expected.id);
    EXPECT_EQ(loaded.artist, expected.artist);
    EXPECT_EQ(loaded.title, expected.title);
    EXPECT_EQ(loaded.found, expected.found);
    EXPECT_EQ(loaded.include, expected.include);
    EXPECT_EQ(loaded.options, expected.options);
    EXPECT_EQ(loaded.selectedTrack, expected.selectedTrack);
    EXPECT_FALSE(view.matchedTracks.get().back().selectedTrack);
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(SessionFiles, SavesASessionWithoutRows) {
    test.dialogs.willSaveTo(folder.write("party.orvs", std::string(500, 'x')));
    saveSession(view);
    EXPECT_EQ(folder.read("party.orvs"), R"({"matchInput":"","matchedTracks":[]})");
}

TEST_F(SessionFiles, TellsWhyASessionCouldNotBeSaved) {
    test.dialogs.willSaveTo(folder.makeFolder("party.orvs"));
    saveSession(view);
    test.dialogs.willSaveTo("/dev/full");
    saveSession(view);
    EXPECT_THAT(test.console.lines(), ElementsAre("Failed to save session: Is a directory",
                                                  "Failed to save session: No space left on device"));
}

TEST_F(SessionFiles, CancelledDialogsChangeNothing) {
    workOn("work");
    saveSession(view);
    loadSession(view);
    EXPECT_TRUE(stillOn("work"));
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

/// A session of one row with one option, with a piece of it replaced.
std::string sessionWith(const std::string& piece = {}, const std::string& replacement = {}) {
    std::string json = R"({"matchInput":"in","matchedTracks":[{"id":")" + std::string(rowId) +
                       R"(","title":"T","artist":"A","found":true,"options":[{"title":"t","artist":"a",)"
                       R"("genre":"g","path":"\/p.mp3","bpm":128}],"include":false}]})";
    const std::size_t at = json.find(piece);
    EXPECT_NE(at, std::string::npos) << piece;
    return json.replace(at, piece.size(), replacement);
}

TEST_F(SessionFiles, RefusesWhatIsNoSessionAndKeepsTheState) {
    struct Case {
        const char* quirk;
        std::string json;
    };
    const Case cases[] = {
        {"a playlist", "/Music/a.mp3\n/Music/b.mp3"},
        {"an empty file", ""},
        {"cut off", sessionWith().substr(0, sessionWith().size() - 3)},
        {"followed by more", sessionWith() + "x"},
        {"not UTF-8", sessionWith("\"in\"", "\"\xFF\"")},
        {"half a surrogate pair", sessionWith("\"in\"", "\"\\ud800\"")},
        {"two thousand levels deep", std::string(2000, '[')},
        {"an array", "[" + sessionWith() + "]"},
        {"null", "null"},
        {"a library", R"({"tracks":[],"preferred":{},"folders":[]})"},
        {"no wanted text", sessionWith("\"matchInput\":\"in\",", "")},
        {"a wanted text that is none", sessionWith("\"in\"", "null")},
        {"rows that are an object", R"({"matchInput":"in","matchedTracks":{}})"},
        {"a row that is none", R"({"matchInput":"in","matchedTracks":[null]})"},
        {"a row without an id", sessionWith("\"id\"", "\"ID\"")},
        {"an id that is none", sessionWith("0F8FAD5B-", "0F8FAD5B")},
        {"a row without a title", sessionWith(R"("title":"T",)", "")},
        {"an artist that is a number", sessionWith("\"A\"", "7")},
        {"found is 1", sessionWith("true", "1")},
        {"include is a text", sessionWith("false", "\"false\"")},
        {"include is missing", sessionWith(",\"include\":false", "")},
        {"no options", sessionWith("\"options\"", "\"option\"")},
        {"an option without a genre", sessionWith("\"genre\":\"g\",", "")},
        {"a tempo that is a fraction", sessionWith("128", "1.5")},
        {"a tempo that is a text", sessionWith("128", "\"128\"")},
        {"a tempo past 64 bits", sessionWith("128", "9223372036854775808")},
        {"a selection that is none", sessionWith("\"include\"", R"("selectedTrack":[],"include")")},
        {"one bad row of two", sessionWith("}]}", R"(},{"id":"x"}]})")},
    };
    workOn("work");
    for (const Case& c : cases) {
        loadText(c.json);
        EXPECT_TRUE(stillOn("work")) << c.quirk;
        ASSERT_EQ(test.console.lines().size(), 1U) << c.quirk;
        EXPECT_THAT(test.console.lines().front(), StartsWith("Failed to load session: ")) << c.quirk;
        EXPECT_GT(test.console.lines().front().size(), std::string("Failed to load session: ").size())
            << c.quirk;
    }
}

TEST_F(SessionFiles, TellsWhyASessionCouldNotBeRead) {
    workOn("work");
    test.dialogs.willOpen({folder.path("gone.orvs")});
    loadSession(view);
    test.dialogs.willOpen({folder.path()});
    loadSession(view);
    EXPECT_TRUE(stillOn("work"));
    EXPECT_THAT(test.console.lines(), ElementsAre("Failed to load session: No such file or directory",
                                                  "Failed to load session: Is a directory"));
}

TEST_F(SessionFiles, ReadsWhatAnotherWriterMayHaveWritten) {
    struct Case {
        const char* quirk;
        std::string json;
        std::optional<std::int64_t> bpm;
    };
    const Case cases[] = {
        {"as we write it", sessionWith(), 128},
        {"an id in lower case", sessionWith(rowId, "0f8fad5b-d9cb-469f-a165-70867728950e"), 128},
        {"unknown keys", sessionWith("{", R"({"version":2,"matchInputs":[{}],)"), 128},
        {"unknown keys in a track", sessionWith("\"genre\"", "\"year\":1999,\"genre\""), 128},
        {"a plain slash", sessionWith("\\/", "/"), 128},
        {"white space", sessionWith(",", " ,\r\n\t "), 128},
        {"no selection is null", sessionWith("\"include\"", "\"selectedTrack\":null,\"include\""), 128},
        {"a tempo of null", sessionWith("128", "null"), std::nullopt},
        {"no tempo", sessionWith(",\"bpm\":128", ""), std::nullopt},
        {"a tempo of 0", sessionWith("128", "0"), 0},
        {"a negative tempo", sessionWith("128", "-1"), -1},
        {"an empty genre", sessionWith("\"g\"", "\"\""), 128},
    };
    for (const Case& c : cases) {
        workOn("work");
        loadText(c.json);
        EXPECT_THAT(test.console.lines(), IsEmpty()) << c.quirk;
        EXPECT_EQ(view.matchInput.get(), "in") << c.quirk;
        EXPECT_TRUE(view.showResultsPage.get()) << c.quirk;
        ASSERT_EQ(view.matchedTracks.get().size(), 1U) << c.quirk;
        const MatchedTrack& row = view.matchedTracks.get().front();
        EXPECT_EQ(row.id.toString(), rowId) << c.quirk;
        ASSERT_EQ(row.options.size(), 1U) << c.quirk;
        EXPECT_EQ(row.options.front().path, "/p.mp3") << c.quirk;
        EXPECT_EQ(row.options.front().bpm, c.bpm) << c.quirk;
        EXPECT_FALSE(row.selectedTrack) << c.quirk;
        EXPECT_NE(encodeSession(view.matchInput.get(), view.matchedTracks.get()).find(rowId),
                  std::string::npos)
            << c.quirk;
    }
}

TEST_F(SessionFiles, AutoSaveTurnsItsSymbolForTwoSeconds) {
    workOn("work");
    std::vector<std::string> linesWhenTurning;
    view.isAutoSaving.observe([&] { linesWhenTurning = test.console.lines(); });
    autoSaveSession(view);
    EXPECT_THAT(test.console.lines(), ElementsAre(savingLine()));
    EXPECT_EQ(decodeSession(autoSaved())->matchInput, "work");
    EXPECT_FALSE(view.isAutoSaving.get()) << "the symbol turns by way of the queue";
    test.mainQueue.run();
    EXPECT_TRUE(view.isAutoSaving.get());
    EXPECT_THAT(linesWhenTurning, ElementsAre(savingLine()));
    test.mainQueue.advance(1999ms);
    EXPECT_TRUE(view.isAutoSaving.get());
    test.mainQueue.advance(1ms);
    EXPECT_FALSE(view.isAutoSaving.get());
}

TEST_F(SessionFiles, AutoSaveWithoutRowsKeepsTheLastOne) {
    workOn("work");
    autoSaveSession(view);
    view.matchedTracks.set({});
    view.matchInput.set("later");
    autoSaveSession(view);
    EXPECT_EQ(decodeSession(autoSaved())->matchInput, "work");
    EXPECT_THAT(test.console.lines(), ElementsAre(savingLine()));
}

TEST_F(SessionFiles, AutoSaveTellsAFailureAndKeepsTheSymbolStill) {
    workOn("work");
    struct Case {
        const char* quirk;
        std::function<void()> spoil;
        const char* description;
    };
    const Case cases[] = {
        {"a file where the folder should be", [&] { test.support().write("Orvalen"); }, "Not a directory"},
        {"a folder where the file should be", [&] { test.support().makeFolder("Orvalen/session.orvs"); },
         "Is a directory"},
        {"a full disk",
         [&] {
             test.support().makeFolder("Orvalen");
             std::filesystem::create_symlink("/dev/full", autoSaveFile());
         },
         "No space left on device"},
    };
    for (const Case& c : cases) {
        std::filesystem::remove_all(test.support().path("Orvalen"));
        c.spoil();
        test.console.clear();
        autoSaveSession(view);
        test.mainQueue.run();
        EXPECT_THAT(test.console.lines(),
                    ElementsAre(std::string("Auto-save session failed: ") + c.description))
            << c.quirk;
        EXPECT_FALSE(view.isAutoSaving.get()) << c.quirk;
    }
}

TEST_F(SessionFiles, AutoSaveOntoAFullDiskKeepsTheLastOne) {
    workOn("work");
    autoSaveSession(view);
    test.console.clear();
    {
        const SmallDisk disk(autoSaved().size() + 100);
        workOn(std::string(1000, 'x'));
        autoSaveSession(view);
    }
    EXPECT_THAT(test.console.lines(), ElementsAre("Auto-save session failed: File too large"));
    loadLastSession(view);
    EXPECT_EQ(view.matchInput.get(), "work");
}

TEST_F(SessionFiles, WithoutASupportFolderThereIsNoAutoSave) {
    workOn("work");
    test.userFolders.folder = std::nullopt;
    autoSaveSession(view);
    loadLastSession(view);
    EXPECT_TRUE(stillOn("work"));
    EXPECT_THAT(test.console.lines(), IsEmpty());
    EXPECT_EQ(test.mainQueue.pending(), 0U);
}

TEST_F(SessionFiles, LoadLastBringsBackTheAutoSaveAndNeverAManualOne) {
    workOn("auto");
    autoSaveSession(view);
    workOn("manual");
    test.dialogs.willSaveTo(test.support().path("Orvalen/playlist_session.orvs"));
    saveSession(view);
    test.console.clear();
    loadLastSession(view);
    EXPECT_EQ(view.matchInput.get(), "auto");
    EXPECT_TRUE(view.showResultsPage.get());
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(SessionFiles, LoadLastSaysNothingWhenThereIsNothingToLoad) {
    workOn("work");
    loadLastSession(view);
    EXPECT_TRUE(stillOn("work"));
    for (const std::string& bytes : {std::string(), std::string("/a.mp3"), sessionWith("128", "1.5")}) {
        test.support().write("Orvalen/session.orvs", bytes);
        loadLastSession(view);
        EXPECT_TRUE(stillOn("work")) << bytes;
    }
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

} // namespace
} // namespace orvalen::test
