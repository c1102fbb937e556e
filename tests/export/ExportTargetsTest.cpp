#include "export/ExportTargets.h"

#include "core/Uuid.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

constexpr std::string_view plainFailure = "Failed to write playlist file:";
constexpr ExportTarget choices[] = {
    {"M3U", "m3u", "playlist.m3u", "", "", "", plainFailure, ""},
    {"M3U8", "m3u8", "playlist.m3u8", "", "", "", plainFailure, ""},
    {"PLS", "pls", "playlist.pls", "", "", "", plainFailure, ""},
    {"Rekordbox (M3U8)", "rekordbox", "playlist.m3u8", "", "",
     "Tip: In Rekordbox, use File > Import Playlist and choose your exported M3U.", plainFailure, ""},
    {"VirtualDJ (M3U)", "virtualdj", "playlist.m3u", "Export for VirtualDJ",
     "Choose a folder where VirtualDJ will pick up the playlist.",
     "Tip: Choose a folder where VirtualDJ picks up playlists. Then drag the file into VirtualDJ.",
     "❌ Failed to export VirtualDJ playlist:", "✅ Exported VirtualDJ playlist to: "},
    {"Serato M3U", "serato", "serato-playlist.m3u", "Export Serato M3U",
     "Choose where to save the M3U file for Serato.",
     "Tip: Open Serato and drag in your exported M3U file from the Finder.",
     "❌ Failed to export Serato M3U:", "✅ Exported Serato M3U to: "},
};

TEST_F(ExportTargets, StandInPickerOrderAskWriteAndTell) {
    const std::string unwritable = folder.makeFolder("a folder");
    ASSERT_EQ(exportTargets().size(), std::size(choices));
    for (std::size_t i = 0; i < std::size(choices); ++i) {
        const ExportTarget& choice = choices[i];
        SCOPED_TRACE(choice.value);
        EXPECT_EQ(exportTargets()[i].label, choice.label);
        EXPECT_EQ(exportTargets()[i].value, choice.value);
        EXPECT_EQ(exportTargets()[i].tip, choice.tip);
        view.showExportSuccessBanner.set(false);

        exportAs(choice.value); // cancelled
        EXPECT_THAT(test.console.lines(), ElementsAre(exportingLine(choice.value)));
        const SaveOptions& asked = test.dialogs.saved.back();
        EXPECT_EQ(asked.proposedName, choice.proposedName);
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
    test.mainQueue.advance(1ms); // two seconds after the first: its hiding is not called off
    EXPECT_FALSE(view.showExportSuccessBanner.get());
}

TEST_F(ExportTargets, HowToAlertsTellTheSteps) {
    const HowTo alerts[] = {
        {"How to use in Serato", "Import into Serato",
         "1. Open Serato DJ software.\n2. Drag the M3U file into the left menu pane of Serato.\n3. Your "
         "playlist is now ready to use in Serato DJ."},
        {"How to use in Rekordbox", "Import into Rekordbox",
         "1. Open Rekordbox software.\n2. Click File, then Import Playlist.\n3. Select the M3U file, and "
         "click Open.\n4. Your playlist is now ready to use in Rekordbox."},
    };
    ASSERT_EQ(howTos().size(), std::size(alerts));
    for (std::size_t i = 0; i < std::size(alerts); ++i) {
        EXPECT_EQ(howTos()[i].button, alerts[i].button);
        showHowToAlert(view, howTos()[i]);
        EXPECT_EQ(test.dialogs.messages.at(i).title, alerts[i].title);
        EXPECT_EQ(test.dialogs.messages.at(i).text, alerts[i].text);
    }
}

} // namespace
} // namespace orvalen::test
