#include "export/ExportTargets.h"

#include "core/Uuid.h"
#include "export/PlaylistCounts.h"
#include "export/PlaylistFile.h"
#include "support/Builders.h"
#include "support/TemporaryFolder.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class ExportTargets : public testing::Test {
protected:
    ExportTargets() {
        view.matchedTracks.set({row("A", "1", {track("A", "1", 90, "/Müsik/1.mp3")}, true),
                                row("A", "2", {track("A", "2", {}, "/Müsik/2.mp3")}, false),
                                row("A", "3", {track("A", "3", {}, "/Müsik/3.mp3")}, true)});
    }
    void exportAs(std::string_view format) {
        test.console.clear();
        view.selectedExportFormat.set(std::string(format));
        exportPlaylist(view);
    }
    std::string exportingLine(std::string_view format) { return "Exporting format: " + std::string(format); }

    TestPlatform test;
    ContentView& view = test.view;
    TemporaryFolder folder;
    const std::string playlist = "/Müsik/1.mp3\n/Müsik/3.mp3";
};

TEST_F(ExportTargets, AskWriteAndTellInPickerOrder) {
    const std::string unwritable = folder.makeFolder("a folder");
    const std::pair<const char*, const char*> expected[] = {
        {"m3u", "playlist.m3u"},        {"m3u8", "playlist.m3u8"},     {"pls", "playlist.pls"},
        {"rekordbox", "playlist.m3u8"}, {"virtualdj", "playlist.m3u"}, {"serato", "serato-playlist.m3u"}};
    ASSERT_EQ(exportTargets().size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const ExportTarget& choice = exportTargets()[i];
        SCOPED_TRACE(choice.value);
        EXPECT_EQ(choice.value, expected[i].first);
        view.showExportSuccessBanner.set(false);
        exportAs(choice.value); // cancelled
        EXPECT_THAT(test.console.lines(), ElementsAre(exportingLine(choice.value)));
        const SaveOptions& asked = test.dialogs.saved.back();
        EXPECT_EQ(asked.proposedName, expected[i].second);
        EXPECT_EQ(asked.title, choice.dialogTitle);
        EXPECT_EQ(asked.message, choice.dialogMessage);
        EXPECT_TRUE(asked.types.anything());

        test.dialogs.willSaveTo(unwritable);
        exportAs(choice.value);
        EXPECT_THAT(test.console.lines(), ElementsAre(exportingLine(choice.value),
                                                      std::string(choice.failureLine) + " Is a directory"));
        EXPECT_FALSE(view.showExportSuccessBanner.get());

        const std::string file = folder.path(choice.value);
        test.dialogs.willSaveTo(file);
        exportAs(choice.value);
        EXPECT_EQ(folder.read(choice.value), playlist);
        std::vector<std::string> lines{exportingLine(choice.value)};
        if (!choice.successLine.empty())
            lines.push_back(std::string(choice.successLine) + file);
        EXPECT_EQ(test.console.lines(), lines);
        EXPECT_TRUE(view.showExportSuccessBanner.get());
    }
}

TEST_F(ExportTargets, WriteTheRowsAsTheyAreWhenTheDialogIsAnswered) {
    test.dialogs.whileOpen = [&] {
        EXPECT_EQ(test.console.lines().front(), exportingLine("m3u"));
        view.matchedTracks.update([](auto& rows) { rows.at(1).include = true; });
    };
    test.dialogs.willSaveTo(folder.path("list"));
    exportAs("m3u");
    EXPECT_EQ(folder.read("list"), "/Müsik/1.mp3\n/Müsik/2.mp3\n/Müsik/3.mp3");
}

TEST_F(ExportTargets, AreOfferedOnceARowIsIncludedWithOrWithoutATrack) {
    view.matchedTracks.set({row("A", "T", {track("A", "T")})});
    EXPECT_FALSE(canExport(view));
    view.matchedTracks.set({row("A", "T", {}, true)});
    EXPECT_TRUE(canExport(view));
    exportAs("M3U"); // no choice has this value
    EXPECT_THAT(test.console.lines(), ElementsAre(exportingLine("M3U")));
    EXPECT_THAT(test.dialogs.saved, IsEmpty());
}

TEST_F(ExportTargets, SeratoIsNotifiedBeforeTheDialogAndEvenWhenItIsCancelled) {
    test.dialogs.whileOpen = [&] { EXPECT_EQ(test.notifications.posted.size(), test.dialogs.saved.size()); };
    exportAs("serato");
    test.notifications.error = Error{"no such service"};
    test.dialogs.willSaveTo(folder.path("list"));
    exportAs("serato");
    EXPECT_THAT(test.console.lines(),
                ElementsAre(exportingLine("serato"), "Failed to schedule notification: no such service",
                            "✅ Exported Serato M3U to: " + folder.path("list")));
    ASSERT_EQ(test.notifications.posted.size(), 2U);
    const Notification& first = test.notifications.posted[0];
    EXPECT_EQ(first.title, "Serato Export");
    EXPECT_EQ(first.body, "Exporting M3U for Serato. You can drag this into Serato DJ.");
    EXPECT_TRUE(UUID::parse(first.identifier)) << first.identifier;
    EXPECT_NE(first.identifier, test.notifications.posted[1].identifier);
}

TEST_F(ExportTargets, HideTheBannerTwoSecondsAfterEachExport) {
    const auto exportOnce = [&] {
        test.dialogs.willSaveTo(folder.path("list"));
        exportAs("m3u");
    };
    exportOnce();
    test.mainQueue.advance(1s);
    exportOnce();
    test.mainQueue.advance(999ms);
    EXPECT_TRUE(view.showExportSuccessBanner.get());
    test.mainQueue.advance(1ms); // two seconds after the first banner, whose timer is not cancelled
    EXPECT_FALSE(view.showExportSuccessBanner.get());
}

TEST_F(ExportTargets, HowToAlertsTellTheSteps) {
    showHowToAlert(view, howTos()[0]);
    EXPECT_EQ(test.dialogs.messages.at(0).title, "Import into Serato");
    EXPECT_EQ(test.dialogs.messages.at(0).text, howTos()[0].text);
}

TEST(PlaylistCounts, SayWhatAnExportLacksAndRepeats) {
    const auto included = [](const char* title, const char* path) {
        return row("A", title, {track("A", title, {}, path)}, true);
    };
    std::vector<MatchedTrack> rows{included("1", "/1.mp3"), included("2", "/caf\u00E9.mp3"),
                                   row("A", "not included", {track("A", "T", {}, "/1.mp3")})};
    const auto caption = [&] { return playlistCaption(playlistCounts(rows)); };
    EXPECT_EQ(caption(), "");
    rows.push_back(included("3", "/cafe\u0301.mp3"));
    EXPECT_EQ(caption(), "3 files will be written; 1 file is written twice or more");
    rows.push_back(row("B", "missing", {}, true));
    EXPECT_EQ(caption(),
              "3 files will be written; 1 selected row has no file; 1 file is written twice or more");
    rows.push_back(row("B", "missing, not included"));
    EXPECT_EQ(missingList(rows), "B – missing\nB – missing, not included\n");
}

MatchedTrack rowOf(std::string path, bool include = true) {
    MatchedTrack result = row("A", "T", {track("A", "T")}, include);
    result.selectedTrack->path = std::move(path);
    return result;
}

TEST(PlaylistFile, HoldsThePathsOfTheIncludedRows) {
    const MatchedTrack withoutSelection = row("A", "T", {}, true);
    MatchedTrack notFound = rowOf("/b.mp3");
    notFound.found = false;
    struct Case {
        const char* quirk;
        std::vector<MatchedTrack> rows;
        std::string bytes;
    };
    const Case cases[] = {
        {"other alphabets, accents in both forms",
         {rowOf("/Müsik/Владивосток.mp3"), rowOf("/音楽/😀.m4a"), rowOf("/Cafe\u0301.mp3")},
         "/M\xC3\xBCsik/"
         "\xD0\x92\xD0\xBB\xD0\xB0\xD0\xB4\xD0\xB8\xD0\xB2\xD0\xBE\xD1\x81\xD1\x82\xD0\xBE\xD0\xBA.mp3\n"
         "/\xE9\x9F\xB3\xE6\xA5\xBD/\xF0\x9F\x98\x80.m4a\n/Cafe\xCC\x81.mp3"},
        {"list order, not name order", {rowOf("/b.mp3"), rowOf("/a.mp3")}, "/b.mp3\n/a.mp3"},
        {"an excluded row between",
         {rowOf("/a.mp3"), rowOf("/b.mp3", false), rowOf("/c.mp3")},
         "/a.mp3\n/c.mp3"},
        {"a row without a selection", {withoutSelection, rowOf("/a.mp3"), withoutSelection}, "/a.mp3"},
        {"one file twice", {rowOf("/a.mp3"), rowOf("/a.mp3")}, "/a.mp3\n/a.mp3"},
        {"a browsed file of a line that was not found", {notFound}, "/b.mp3"},
        {"nothing is rewritten", {rowOf("/100% #1 \\ \"x\".mp3"), rowOf("")}, "/100% #1 \\ \"x\".mp3\n"},
        {"no rows", {}, ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(playlistFileText(c.rows), c.bytes) << c.quirk;
}

} // namespace
} // namespace orvalen::test
