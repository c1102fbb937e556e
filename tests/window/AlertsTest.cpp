#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

constexpr auto question = "Are you sure you want to delete the saved library?";

class Alerts : public testing::Test {
protected:
    WindowHarness window;
    ContentView& view = window.view;
};

TEST_F(Alerts, DeleteTheLibraryOnlyWhenToldTo) {
    replaceIndex(view, buildIndex(std::vector{track("ABBA", "SOS")}));
    for (const char* answer : {"Cancel", "Escape", "Delete Library"}) {
        window.click("Remove Saved Library");
        window.expectShown(question);
        EXPECT_FALSE(view.trackDict.get().empty());
        window.expectFocused("Cancel"); // Return must not delete the library
        for (const char* next : {"Delete Library", "Cancel"}) {
            window.key(Qt::Key_Tab);
            EXPECT_EQ(window.focused(), next) << "the keys stay within the question";
        }
        window.waitForRest("Cancel");
        if (std::string_view(answer) == "Escape")
            window.key(Qt::Key_Escape);
        else
            window.click(answer);
        EXPECT_FALSE(view.showDeleteLibraryConfirmation.get()) << answer;
        window.expectGone(question);
    }
    EXPECT_TRUE(view.trackDict.get().empty());
}

TEST_F(Alerts, StayAboveAResultsPageThatOpensLater) {
    view.remoteInfo.set(LatestInfo{"2.0", "https://orvalen.example/get", {}});
    for (const char* button : {"Later", "Download"}) {
        view.showUpdateAlert.set(true);
        window.expectShown("A new version is available.");
        view.showResultsPage.set(true);
        window.waitForRest("Playlist Results");
        EXPECT_EQ(window.focused(), "Later");
        window.key(Qt::Key_Tab);
        EXPECT_EQ(window.focused(), "Download");
        window.click(button);
        EXPECT_FALSE(view.showUpdateAlert.get());
        window.expectFocused("Results");
        view.showResultsPage.set(false);
        window.expectGone("Playlist Results");
    }
    EXPECT_EQ(window.platform.browser.opened, std::vector<std::string>{"https://orvalen.example/get"});
}

TEST_F(Alerts, GiveTheFocusBackAndEscapeClosesWhatIsOnTopAlone) {
    window.control("Remove Saved Library").item->forceActiveFocus(Qt::TabFocusReason);
    window.key(Qt::Key_Space);
    window.expectShown("Delete Library");
    window.key(Qt::Key_Escape);
    window.expectGone("Delete Library");
    window.expectFocused("Remove Saved Library");

    window.openResults();
    window.control("Save Session").item->forceActiveFocus(Qt::TabFocusReason);
    view.remoteInfo.set(LatestInfo{"2.0", {}, {}});
    view.showUpdateAlert.set(true);
    window.expectFocused("Later");
    window.key(Qt::Key_Escape);
    EXPECT_TRUE(view.showResultsPage.get());
    window.expectFocused("Save Session");
    window.key(Qt::Key_Escape);
    window.expectFocused("Remove Saved Library");
}

} // namespace
} // namespace orvalen::test
