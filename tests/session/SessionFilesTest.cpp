#include "session/SessionFiles.h"

#include "core/Json.h"
#include "matching/MatchReview.h"
#include "matching/MatchRun.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

MatchedTrack fullRow() {
    MatchedTrack result =
        row("Мумий Тролль", "Владивосток 2000",
            {track("a", "b", 128, "/Müsik/a.mp3"), track("a", "b", {}, "/音楽/a.mp3")}, true);
    result.id = *UUID::parse("0F8FAD5B-D9CB-469F-A165-70867728950E");
    result.selectedTrack = result.options.back();
    return result;
}

class SessionFiles : public testing::Test {
protected:
    std::string autoSaveFile() const { return test.support().path("Orvalen/session.orvs"); }
    std::string autoSaved() const { return test.support().read("Orvalen/session.orvs"); }
    std::string savingLine() const { return "Auto-saving session to " + autoSaveFile(); }

    /// Sets a state that no test session has, so that every change is visible.
    void workOn(const std::string& input) {
        view.matchInput.set(input);
        view.matchedTracks.set({row("Night Band", input)});
        view.showResultsPage.set(false);
    }
    bool stillOn(const std::string& input) {
        return view.matchInput.get() == input && view.matchedTracks.get().size() == 1 &&
               view.matchedTracks.get().front().title == input && !view.showResultsPage.get();
    }

    TestPlatform test;
    ContentView& view = test.view;
    TemporaryFolder folder;
};

TEST_F(SessionFiles, SavesOneLineThatOtherProgramsRead) {
    MatchedTrack second = row("A", "T");
    second.id = *UUID::parse("00112233-4455-6677-8899-AABBCCDDEEFF");
    view.matchInput.set("Night Band – Last \"Train\"\nИван\t/ x");
    view.matchedTracks.set({fullRow(), second});
    test.dialogs.willSaveTo(folder.path("party"));
    saveSession(view);
    EXPECT_EQ(test.dialogs.saved.front().proposedName, "playlist_session.orvs");
    EXPECT_EQ(test.dialogs.saved.front().title + test.dialogs.saved.front().message, "");
    EXPECT_THAT(test.dialogs.saved.front().types.extensions, ElementsAre("orvs"));
    EXPECT_THAT(test.console.lines(), IsEmpty());
    EXPECT_EQ(
        folder.read("party"),
        R"({"matchInput":"Night Band – Last \"Train\"\nИван\t\/ x","matchedTracks":[)"
        R"({"id":"0F8FAD5B-D9CB-469F-A165-70867728950E","title":"Владивосток 2000",)"
        R"("artist":"Мумий Тролль","found":true,"options":[)"
        R"({"title":"b","artist":"a","genre":"","path":"\/Müsik\/a.mp3","bpm":128},)"
        R"({"title":"b","artist":"a","genre":"","path":"\/音楽\/a.mp3"}],)"
        R"("selectedTrack":{"title":"b","artist":"a","genre":"","path":"\/音楽\/a.mp3"},"include":true},)"
        R"({"id":"00112233-4455-6677-8899-AABBCCDDEEFF","title":"T","artist":"A","found":false,)"
        R"("options":[],"include":false}]})");
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
    const OpenOptions& asked = test.dialogs.opened.front();
    EXPECT_TRUE(asked.files && !asked.folders && !asked.several);
    EXPECT_THAT(asked.types.extensions, ElementsAre("orvs"));
    EXPECT_EQ(encodeSession(view.matchInput.get(), view.matchedTracks.get()), folder.read("party.orvs"));
    EXPECT_TRUE(view.showResultsPage.get());
    EXPECT_EQ(view.selectedExportFormat.get(), "pls");
    EXPECT_EQ(view.inputMode.get(), InputMode::djep);
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(SessionFiles, CancelledDialogsAndFilesThatAreNoSessionKeepTheState) {
    const std::string good = R"({"matchInput":"in","matchedTracks":[]})";
    workOn("work");
    saveSession(view);
    loadSession(view);
    EXPECT_TRUE(stillOn("work"));
    EXPECT_THAT(test.console.lines(), IsEmpty());
    for (const std::string& bytes :
         {std::string(), std::string("/Music/a.mp3"), good + "x", "[" + good + "]"}) {
        test.console.clear();
        test.dialogs.willOpen({folder.write("session.orvs", bytes)});
        loadSession(view);
        EXPECT_TRUE(stillOn("work")) << bytes;
        EXPECT_THAT(test.console.lines(), ElementsAre(MatchesRegex("Failed to load session: .+"))) << bytes;
    }
}

TEST_F(SessionFiles, AFailedSaveIsOneErrorLineAndTheNextSaveWorks) {
    workOn("work");
    test.dialogs.willSaveTo(folder.makeFolder("a folder"));
    saveSession(view);
    test.support().makeFolder("Orvalen/session.orvs");
    autoSaveSession(view);
    test.settle();
    EXPECT_THAT(test.console.lines(), ElementsAre("Failed to save session: Is a directory",
                                                  "Auto-save session failed: Is a directory"));
    std::filesystem::remove(autoSaveFile());
    autoSaveSession(view);
    EXPECT_EQ(decodeSession(autoSaved())->matchInput, "work");
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

TEST_F(SessionFiles, LoadLastBringsBackTheAutoSaveOrSaysNothing) {
    workOn("auto");
    autoSaveSession(view);
    test.console.clear();
    workOn("later");
    loadLastSession(view);
    EXPECT_EQ(view.matchInput.get(), "auto");
    EXPECT_TRUE(view.showResultsPage.get());

    workOn("work");
    test.support().write("Orvalen/session.orvs", "/a.mp3");
    loadLastSession(view);
    EXPECT_TRUE(stillOn("work")) << "no session";
    std::filesystem::remove(autoSaveFile());
    loadLastSession(view);
    EXPECT_TRUE(stillOn("work")) << "no file";
    test.userFolders.folder = std::nullopt;
    autoSaveSession(view);
    loadLastSession(view);
    EXPECT_TRUE(stillOn("work")) << "no support folder";
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(SessionFiles, ReviewedRowsAreKeptWhenOthersReplaceThem) {
    const auto kept = [&] { return decodeSession(test.support().read("Orvalen/session.previous.orvs")); };
    view.matchInput.set("A - T");
    matchLines({"A - T"}, view);
    test.settle();
    view.matchInput.set("B - T");
    matchLines({"B - T"}, view);
    test.settle();
    EXPECT_FALSE(test.support().exists("Orvalen/session.previous.orvs")) << "nothing was ticked";

    setIncludeForAll(view, true);
    test.console.clear();
    view.matchInput.set("C - T");
    matchLines({"C - T"}, view);
    test.settle();
    ASSERT_TRUE(kept().has_value());
    EXPECT_EQ(kept()->matchInput, "B - T");
    EXPECT_EQ(kept()->matchedTracks.at(0).artist, "B");
    EXPECT_TRUE(view.previousSessionIsKept.get());
    for (const std::string& line : test.console.lines())
        EXPECT_EQ(line.find("previous"), std::string::npos) << line;

    view.hasBrowsedFiles.set(true);
    loadPreviousSession(view);
    EXPECT_EQ(view.matchInput.get(), "B - T");
    EXPECT_TRUE(view.matchedTracks.get().at(0).include);
    EXPECT_EQ(kept()->matchInput, "C - T") << "the rows that were replaced in turn";
    loadPreviousSession(view);
    loadPreviousSession(view);
    EXPECT_EQ(kept()->matchInput, "B - T") << "C had no tick, and its browsed file was saved once";

    for (const auto& [age, offered] : {std::pair(23h, true), {25h, false}}) { // after a start
        view.previousSessionIsKept.set(false);
        std::filesystem::last_write_time(test.support().path("Orvalen/session.previous.orvs"),
                                         std::filesystem::file_time_type::clock::now() - age);
        offerPreviousSession(view);
        EXPECT_EQ(view.previousSessionIsKept.get(), offered);
    }
}

} // namespace
} // namespace orvalen::test
