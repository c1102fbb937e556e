#include "core/LibraryIndexBuilder.h"
#include "core/Track.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <QClipboard>
#include <QGuiApplication>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

void fillLibrary(ContentView& view) {
    replaceIndex(view, buildIndex(std::vector{track("ABBA", "Dancing Queen")}));
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
    for (const double progress : {1e-9, 1.0}) { // at the start and at the end
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

TEST(MainPage, AddsAndRemovesFolders) {
    WindowHarness window;
    window.platform.dialogs.willOpen({"/Music/House", "/Music/One", "/Music/None"});
    window.click("Add Music Folder(s)");
    window.click("Remove /Music/One");
    EXPECT_EQ(window.view.musicFolderURLs.get(),
              (std::vector<Location>{Location{"/Music/House"}, Location{"/Music/None"}}));
    window.click("Clear All Folders");
    EXPECT_TRUE(window.view.musicFolderURLs.get().empty());
    EXPECT_FALSE(window.shows("Scanned Folders"));
}

TEST(MainPage, ShowsHowFarScanAndMatchAre) {
    WindowHarness window;
    window.view.scanProgress.set(0.37);
    window.view.scanningFileName.set("a.mp3");
    window.expectShown("a.mp3");
    const auto scan = window.control("Scanning…", QAccessible::ProgressBar);
    EXPECT_EQ(scan.description(), "37 %");
    EXPECT_EQ(scan.interface()->valueInterface()->currentValue().toInt(), 37);
    window.view.scanProgress.set(1);
    window.expectGone("Scanning…");

    window.view.isMatching.set(true);
    window.expectShown("Matching a.mp3…");
    EXPECT_FALSE(window.shows("Matching...")) << "no line is done yet";
    window.view.matchProgress.set(0.5);
    window.expectShown("Matching...", QAccessible::ProgressBar);
    window.view.isMatching.set(false);
    window.expectGone("Matching a.mp3…");
}

TEST(MainPage, SwitchesBetweenTheInputs) {
    WindowHarness window;
    ContentView& view = window.view;
    window.click("Spotify Playlist");
    EXPECT_EQ(view.inputMode.get(), InputMode::spotify);
    EXPECT_FALSE(window.shows("Wanted list"));
    QGuiApplication::clipboard()->setText(" \nhttps://playlists.example/1\r\n");
    window.click("Spotify playlist URL");
    window.key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(view.spotifyURLInput.get(), "https://playlists.example/1") << "one line without outer blanks";
    window.type("2 3");
    EXPECT_EQ(view.spotifyURLInput.get(), "https://playlists.example/12 3");

    window.click("DJEP CSV");
    EXPECT_EQ(view.inputMode.get(), InputMode::djep);
    window.click("Ignore 'Do Not Play' Requests");
    EXPECT_FALSE(view.ignoreDoNotPlay.get());
    EXPECT_FALSE(window.control("Ignore 'Do Not Play' Requests").checked());
    window.click("Import DJEP CSV");
    EXPECT_EQ(window.platform.dialogs.opened.size(), 1U);

    window.click("Track List");
    window.click("Title – Artist");
    EXPECT_EQ(view.matchInputFormat.get(), titleArtistFormat);
    EXPECT_TRUE(window.control("Title – Artist").checked());
    window.click("📄 Paste Format Help");
    window.expectShown("• Paste tracks like 'Artist – Title', one per line.");
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
    for (const char* part : {"Log", "Add Music Folder(s)", "Spotify Playlist"}) {
        window.key(Qt::Key_F6); // to the next part; nothing can be matched without an address
        EXPECT_EQ(window.focused(), part);
    }
    window.key(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(window.focused(), "Add Music Folder(s)");
}

} // namespace
} // namespace orvalen::test
