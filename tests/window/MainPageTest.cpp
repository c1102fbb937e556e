#include "core/Track.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <functional>
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
    for (const char* name :
         {"Orvalen", "Library Controls", "Add Music Folder(s)", "Load Session", "Load Last Session",
          "Scan Library", "Backup Scanned Library", "Load Scanned Library", "Remove Saved Library",
          "Tracks Indexed: 0", "Track List", "Spotify Playlist", "DJEP CSV", "Input Format", "Artist – Title",
          "Title – Artist", "📄 Paste Format Help", "Wanted list", "Match Playlist"})
        EXPECT_TRUE(window.shows(name)) << name;
    for (const char* name :
         {"Scanned Folders", "Clear All Folders", "Scanning…", "Matching...", "Playlist Results",
          "Spotify playlist URL", "Import DJEP CSV", "• Matching is case-insensitive and flexible."})
        EXPECT_FALSE(window.shows(name)) << name;
    EXPECT_TRUE(
        window.shows("Created by " + QString::fromUtf8(configuration::siteName.data()) + " v1.0 (Build 1)"));
    EXPECT_TRUE(window.control("Track List").checked());
    EXPECT_FALSE(window.control("DJEP CSV").checked());
}

TEST(MainPage, EnablesWhatTheStateAllows) {
    struct Case {
        const char* what;
        std::function<void(ContentView&)> prepare;
        const char* button;
        bool enabled;
    };
    const auto folder = [](ContentView& view) { view.musicFolderURLs.set({Location{"/Music"}}); };
    const auto scan = [folder](double progress) {
        return [folder, progress](ContentView& view) {
            folder(view);
            view.scanProgress.set(progress);
        };
    };
    const auto mode = [](InputMode input) {
        return [input](ContentView& view) {
            fillLibrary(view);
            view.inputMode.set(input);
        };
    };
    const std::vector<Case> cases{
        {"no folder to scan", [](ContentView&) {}, "Scan Library", false},
        {"a folder to scan", folder, "Scan Library", true},
        {"a scan runs", scan(0.5), "Scan Library", false},
        {"a scan has just begun", scan(1e-9), "Add Music Folder(s)", false},
        {"a scan is at its very end", scan(1), "Load Session", false},
        {"a scan runs, last session", scan(0.5), "Load Last Session", false},
        {"a scan runs, the library can still be saved", scan(0.5), "Backup Scanned Library", true},
        {"no library", [](ContentView& view) { view.matchInput.set("a - b"); }, "Match Playlist", false},
        {"no library, even for DJEP", [](ContentView& view) { view.inputMode.set(InputMode::djep); },
         "Match Playlist", false},
        {"a list of blanks",
         [](ContentView& view) {
             fillLibrary(view);
             view.matchInput.set(" \n\t\n");
         },
         "Match Playlist", false},
        {"a list",
         [](ContentView& view) {
             fillLibrary(view);
             view.matchInput.set("a - b");
         },
         "Match Playlist", true},
        {"a blank address", mode(InputMode::spotify), "Match Playlist", false},
        {"DJEP before any import", mode(InputMode::djep), "Match Playlist", true},
    };
    for (const Case& row : cases) {
        WindowHarness window;
        row.prepare(window.view);
        window.settle();
        EXPECT_EQ(window.control(row.button).enabled(), row.enabled) << row.what;
    }
}

TEST(MainPage, ListsTheFoldersWithTheirCounts) {
    WindowHarness window;
    fillLibrary(window.view);
    window.view.musicFolderURLs.set({{"/Music/House"}, {"/Music/One"}, {"/Music/None"}});
    window.settle();
    EXPECT_TRUE(window.shows("Refresh Library"));
    EXPECT_TRUE(window.shows("Tracks Indexed: 3"));
    EXPECT_TRUE(window.shows("2 tracks"));
    EXPECT_TRUE(window.shows("1 track"));
    EXPECT_FALSE(window.shows("0 tracks"));

    window.click("Remove /Music/One");
    EXPECT_EQ(window.view.musicFolderURLs.get(),
              (std::vector<Location>{Location{"/Music/House"}, Location{"/Music/None"}}));
    EXPECT_FALSE(window.shows("Remove /Music/One"));
    window.click("Clear All Folders");
    EXPECT_TRUE(window.view.musicFolderURLs.get().empty());
    EXPECT_FALSE(window.shows("Scanned Folders"));
}

TEST(MainPage, AddsWhatTheDialogAnswers) {
    WindowHarness window;
    window.platform.dialogs.willOpen({"/Music/House", "/Music/x.mp3"});
    window.click("Add Music Folder(s)");
    EXPECT_EQ(window.view.musicFolderURLs.get().size(), 2U);
    ASSERT_EQ(window.platform.dialogs.opened.size(), 1U);
    EXPECT_EQ(window.platform.dialogs.opened.front().prompt, "Add Music Folders or Audio Files");
}

TEST(MainPage, ShowsHowFarTheScanIs) {
    WindowHarness window;
    window.view.musicFolderURLs.set({{"/Music"}});
    window.view.scanProgress.set(0.37);
    window.view.scanningFileName.set("Night Band - Last Train Home.mp3");
    window.settle();
    EXPECT_EQ(window.control("Scanning…", QAccessible::ProgressBar).description(), "37 %");
    EXPECT_TRUE(window.shows("Night Band - Last Train Home.mp3"));
    window.view.scanProgress.set(1);
    window.settle();
    EXPECT_FALSE(window.shows("Scanning…"));
}

TEST(MainPage, ShowsHowFarTheMatchIs) {
    WindowHarness window;
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
    EXPECT_EQ(order,
              (QStringList{"Add Music Folder(s)", "Load Session", "Load Last Session", "Remove /Music/House",
                           "Clear All Folders", "Refresh Library", "Backup Scanned Library",
                           "Load Scanned Library", "Remove Saved Library", "Track List", "Artist – Title",
                           "📄 Paste Format Help", "Wanted list", "Match Playlist", "Add Music Folder(s)",
                           "Load Session", "Load Last Session"}));
    window.key(Qt::Key_Return);
    window.key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(window.focused(), "Load Session");
    window.key(Qt::Key_Space);
    EXPECT_EQ(window.platform.dialogs.opened.size(), 1U) << "Space presses";

    for (int i = 0; i < 8; ++i)
        window.key(Qt::Key_Tab);
    ASSERT_EQ(window.focused(), "Track List");
    window.key(Qt::Key_Right);
    EXPECT_EQ(window.view.inputMode.get(), InputMode::spotify);
    EXPECT_EQ(window.focused(), "Spotify Playlist");
}

TEST(MainPage, CanBePressedByAScreenReader) {
    WindowHarness window;
    for (const WindowHarness::Control& control : window.everything())
        EXPECT_FALSE(control.name.isEmpty())
            << "role " << control.role << " at " << control.sceneRect().x() << "," << control.sceneRect().y();
    window.press(window.control("DJEP CSV"));
    EXPECT_EQ(window.view.inputMode.get(), InputMode::djep);
    window.press(window.control("Ignore 'Do Not Play' Requests"));
    EXPECT_FALSE(window.view.ignoreDoNotPlay.get());
    window.press(window.control("Load Session"));
    EXPECT_EQ(window.platform.dialogs.opened.size(), 1U);
    window.view.scanProgress.set(0.5);
    window.settle();
    window.press(window.control("Load Session"));
    EXPECT_EQ(window.platform.dialogs.opened.size(), 1U) << "disabled";
}

} // namespace
} // namespace orvalen::test
