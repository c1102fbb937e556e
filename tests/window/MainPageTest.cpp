#include "core/LibraryIndexBuilder.h"
#include "core/Track.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

void fillLibrary(ContentView& view) {
    replaceIndex(view,
                 buildIndex(std::vector{track("Night Band", "Last Train Home", 128, "/Music/House/a.mp3"),
                                        track("Night Band", "Slow Train", 90, "/Music/House/b.mp3"),
                                        track("ABBA", "Dancing Queen", {}, "/Music/One/c.mp3")}));
}

TEST(MainPage, StartsEmpty) {
    WindowHarness window;
    EXPECT_EQ(window.window()->title(), "Orvalen");
    for (const char* name : {"Orvalen", "Library Controls", "Scan Library", "Tracks Indexed: 0",
                             "Input Format", "Title – Artist"})
        EXPECT_TRUE(window.shows(name)) << name;
    for (const char* name :
         {"Scanned Folders", "Clear All Folders", "Scanning…", "Matching...", "Playlist Results",
          "Spotify playlist URL", "Import DJEP CSV", "• Matching is case-insensitive and flexible."})
        EXPECT_FALSE(window.shows(name)) << name;
    EXPECT_TRUE(
        window.shows("Created by " + QString::fromUtf8(configuration::siteName.data()) + " v1.0 (Build 1)"));
    EXPECT_TRUE(window.control("Track List").checked());
    EXPECT_FALSE(window.control("DJEP CSV").checked());
    for (const WindowHarness::Control& control : window.everything())
        EXPECT_FALSE(control.name.isEmpty()) << "role " << control.role;
}

TEST(MainPage, EnablesWhatTheStateAllows) {
    WindowHarness window;
    ContentView& view = window.view;
    const auto enabled = [&](const char* name) {
        window.settle();
        return window.control(name).enabled();
    };
    EXPECT_FALSE(enabled("Scan Library")) << "no folder";
    view.musicFolderURLs.set({{"/Music"}});
    EXPECT_TRUE(enabled("Scan Library"));
    for (const double progress : {1e-9, 1.0}) { // just begun, and at its very end
        view.scanProgress.set(progress);
        for (const char* name : {"Scan Library", "Add Music Folder(s)", "Load Session"})
            EXPECT_FALSE(enabled(name)) << name << " at " << progress;
        EXPECT_TRUE(enabled("Backup Scanned Library"));
    }
    view.scanProgress.set(0);

    view.matchInput.set("a - b");
    EXPECT_FALSE(enabled("Match Playlist")) << "no library";
    fillLibrary(view);
    EXPECT_TRUE(enabled("Match Playlist"));
    view.matchInput.set(" \n\t\n");
    EXPECT_FALSE(enabled("Match Playlist")) << "a list of blanks";
    view.inputMode.set(InputMode::spotify);
    EXPECT_FALSE(enabled("Match Playlist")) << "no address";
    view.inputMode.set(InputMode::djep);
    EXPECT_TRUE(enabled("Match Playlist")) << "before any import";
}

TEST(MainPage, ListsTheFoldersWithTheirCounts) {
    WindowHarness window;
    fillLibrary(window.view);
    window.platform.dialogs.willOpen({"/Music/House", "/Music/One", "/Music/None"});
    window.click("Add Music Folder(s)");
    EXPECT_TRUE(window.shows("Tracks Indexed: 3"));
    EXPECT_TRUE(window.shows("2 tracks"));
    window.click("Remove /Music/One");
    EXPECT_EQ(window.view.musicFolderURLs.get(),
              (std::vector<Location>{Location{"/Music/House"}, Location{"/Music/None"}}));
    EXPECT_FALSE(window.shows("Remove /Music/One"));
    window.click("Clear All Folders");
    EXPECT_TRUE(window.view.musicFolderURLs.get().empty());
    EXPECT_FALSE(window.shows("Scanned Folders"));
}

TEST(MainPage, ShowsHowFarScanAndMatchAre) {
    WindowHarness window;
    window.view.scanProgress.set(0.37);
    window.view.scanningFileName.set("Night Band - Last Train Home.mp3");
    window.settle();
    EXPECT_EQ(window.control("Scanning…", QAccessible::ProgressBar).description(), "37 %");
    auto* told =
        QAccessible::queryAccessibleInterface(window.control("Scanning…", QAccessible::ProgressBar).item)
            ->valueInterface();
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->currentValue().toInt(), 37);
    EXPECT_TRUE(window.shows("Night Band - Last Train Home.mp3"));
    window.view.scanProgress.set(1);
    window.settle();
    EXPECT_FALSE(window.shows("Scanning…"));

    window.view.isMatching.set(true);
    window.view.scanningFileName.set("ABBA – Dancing Queen");
    window.settle();
    EXPECT_TRUE(window.shows("Matching ABBA – Dancing Queen…"));
    EXPECT_FALSE(window.shows("Matching...")) << "no line is done yet";
    window.view.matchProgress.set(0.5);
    EXPECT_TRUE(window.waitFor([&] {
        return window.shows("Matching...") &&
               window.control("Matching...", QAccessible::ProgressBar).description() == "50 %";
    }));
    window.view.matchProgress.set(0);
    window.view.isMatching.set(false);
    window.settle();
    EXPECT_FALSE(window.shows("Matching..."));
    EXPECT_FALSE(window.shows("Matching ABBA – Dancing Queen…"));
}

TEST(MainPage, SwitchesBetweenTheInputs) {
    WindowHarness window;
    fillLibrary(window.view);
    window.click("Spotify Playlist");
    EXPECT_EQ(window.view.inputMode.get(), InputMode::spotify);
    EXPECT_FALSE(window.shows("Wanted list"));
    window.click("Spotify playlist URL");
    window.type("https://open.example/playlist/1");
    EXPECT_EQ(window.view.spotifyURLInput.get(), "https://open.example/playlist/1");
    EXPECT_TRUE(window.control("Match Playlist").enabled());

    window.click("DJEP CSV");
    EXPECT_EQ(window.view.inputMode.get(), InputMode::djep);
    EXPECT_TRUE(window.control("Ignore 'Do Not Play' Requests").checked());
    window.click("Ignore 'Do Not Play' Requests");
    EXPECT_FALSE(window.view.ignoreDoNotPlay.get());
    EXPECT_FALSE(window.control("Ignore 'Do Not Play' Requests").checked());
    window.click("Import DJEP CSV");
    EXPECT_EQ(window.platform.dialogs.opened.size(), 1U);

    window.click("Track List");
    window.click("Title – Artist");
    EXPECT_EQ(window.view.matchInputFormat.get(), titleArtistFormat);
    EXPECT_TRUE(window.control("Title – Artist").checked());
    window.click("📄 Paste Format Help");
    EXPECT_TRUE(window.shows("• Paste tracks like 'Artist – Title', one per line."));
    EXPECT_TRUE(window.shows("• Matching is case-insensitive and flexible."));
}

TEST(MainPage, CanBeUsedByKeysAlone) {
    WindowHarness window;
    window.view.musicFolderURLs.set({{"/Music/House"}});
    fillLibrary(window.view);
    window.view.matchInput.set("a - b");
    window.settle();
    QStringList order;
    for (int i = 0; i < 17; ++i) {
        window.key(Qt::Key_Tab);
        order.append(window.focused());
    }
    EXPECT_EQ(order, (QStringList{"Add Music Folder(s)", "Load Session", "Load Last Session",
                                  "Remove /Music/House", "Clear All Folders", "Refresh Library",
                                  "Backup Scanned Library", "Load Scanned Library", "Remove Saved Library",
                                  "Track List", "Artist – Title", "📄 Paste Format Help", "Wanted list",
                                  "Tidy List", "Match Playlist", "Log", "Add Music Folder(s)"}));
    window.key(Qt::Key_Space);
    window.key(Qt::Key_Return);
    EXPECT_EQ(window.platform.dialogs.opened.size(), 2U);
    for (int i = 0; i < 7; ++i)
        window.key(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(window.focused(), "Track List");
    window.key(Qt::Key_Right);
    EXPECT_EQ(window.view.inputMode.get(), InputMode::spotify);
    EXPECT_EQ(window.focused(), "Spotify Playlist");
}

} // namespace
} // namespace orvalen::test
