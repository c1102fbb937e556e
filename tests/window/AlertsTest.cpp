#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

constexpr auto question = "Are you sure you want to delete the saved library?";

class Alerts : public testing::Test {
protected:
    void waitForButton(const char* name) {
        EXPECT_TRUE(window.waitFor([&] { return window.all(name, QAccessible::Button).size() == 1; }))
            << name;
    }
    void expectGone(const char* text) {
        EXPECT_TRUE(window.waitFor([&] { return !window.shows(text); })) << text;
    }

    WindowHarness window;
    ContentView& view = window.view;
};

TEST_F(Alerts, DeleteOnlyWhenToldTo) {
    replaceIndex(view, buildIndex(std::vector{track("ABBA", "SOS")}));
    for (const char* answer : {"Cancel", "Escape", "Delete Library"}) {
        window.click("Remove Saved Library");
        EXPECT_TRUE(view.showDeleteLibraryConfirmation.get());
        waitForButton("Delete Library");
        EXPECT_TRUE(window.shows(question));
        EXPECT_FALSE(view.trackDict.get().empty());
        if (std::string_view(answer) == "Escape")
            window.key(Qt::Key_Escape);
        else
            window.click(answer);
        EXPECT_FALSE(view.showDeleteLibraryConfirmation.get()) << answer;
        expectGone(question);
    }
    EXPECT_TRUE(view.trackDict.get().empty());
}

TEST_F(Alerts, KeepTheKeysToThemselves) {
    window.click("Remove Saved Library");
    waitForButton("Delete Library");
    EXPECT_EQ(window.focused(), "Cancel") << "Return must not delete by accident";
    QStringList reached;
    for (int i = 0; i < 4; ++i) {
        window.key(Qt::Key_Tab);
        reached.append(window.focused());
    }
    EXPECT_EQ(reached, (QStringList{"Delete Library", "Cancel", "Delete Library", "Cancel"}));
}

TEST_F(Alerts, AnnounceANewerVersion) {
    struct Case {
        const char* what;
        LatestInfo info;
        const char* message;
        const char* button;
        std::vector<std::string> opened;
    };
    const std::vector<Case> cases{
        {"notes", {"2.0", "https://orvalen.example/get", "Faster."}, "Faster.", "Later", {}},
        {"no notes",
         {"2.0", "https://orvalen.example/get", {}},
         "A new version is available.",
         "Download",
         {"https://orvalen.example/get"}},
        {"no address", {"2.0", {}, {}}, "A new version is available.", "Download", {}},
        {"an address that is no web address",
         {"2.0", "file:///etc/passwd", {}},
         "A new version is available.",
         "Download",
         {}},
        {"markup is shown, not read",
         {"2.0", {}, "<img src='https://x/y'>"},
         "<img src='https://x/y'>",
         "Later",
         {}},
    };
    for (const Case& row : cases) {
        window.platform.browser.opened.clear();
        view.remoteInfo.set(row.info);
        view.showUpdateAlert.set(true);
        waitForButton("Download");
        EXPECT_TRUE(window.shows("Update Available")) << row.what;
        EXPECT_TRUE(window.shows(row.message)) << row.what;
        window.click(row.button);
        EXPECT_EQ(window.platform.browser.opened, row.opened) << row.what;
        EXPECT_FALSE(view.showUpdateAlert.get()) << row.what;
        expectGone("Update Available");
    }
}

TEST_F(Alerts, NoAlertWithoutAManifest) {
    view.showUpdateAlert.set(true);
    window.settle();
    EXPECT_FALSE(window.shows("Update Available"));
}

TEST_F(Alerts, StandOverTheResultsPage) {
    view.showResultsPage.set(true);
    EXPECT_TRUE(window.waitFor([&] { return window.shows("Playlist Results"); }));
    view.remoteInfo.set(LatestInfo{"2.0", {}, {}});
    view.showUpdateAlert.set(true);
    waitForButton("Later");
    window.key(Qt::Key_Escape);
    EXPECT_FALSE(view.showUpdateAlert.get());
    EXPECT_TRUE(view.showResultsPage.get()) << "Escape closes what is on top, and nothing else";
}

} // namespace
} // namespace orvalen::test
