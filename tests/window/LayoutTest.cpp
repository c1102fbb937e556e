#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <QFont>
#include <QGuiApplication>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

namespace orvalen::test {
namespace {

/// Shows one state after the other at the least size and looks at it.
void inEveryState(const std::function<void(const std::string& state, WindowHarness&)>& look) {
    const std::map<std::string, std::function<void(ContentView&)>> states{
        {"folders, scanning and matching",
         [](ContentView& view) {
             replaceIndex(view, buildIndex(std::vector{track("a", "b", 1, "/Music/a.mp3")}));
             view.musicFolderURLs.set({{"/Music"}, {"/Other"}, {"/More"}});
             view.scanProgress.set(0.5);
             view.scanningFileName.set("a.mp3");
             view.isMatching.set(true);
             view.matchProgress.set(0.5);
         }},
        {"left-out lines", [](ContentView& view) { view.matchInput.set("no dash here\nA – B – C"); }},
        {"playlist address", [](ContentView& view) { view.inputMode.set(InputMode::spotify); }},
        {"event list", [](ContentView& view) { view.inputMode.set(InputMode::djep); }},
        {"results",
         [](ContentView& view) {
             replaceIndex(view, buildIndex(std::vector{track("ABBA", "Dancing Queen")}));
             view.matchedTracks.set(
                 {row("ABBA", "SOS", {track("ABBA", "SOS", 120), track("ABBA", "SOS", 121, "/x")}),
                  row("Aba", "Dancing Qeen")});
             view.selectedExportFormat.set("virtualdj");
             view.showResultsPage.set(true);
             view.selectedTrack.set(track("ABBA", "SOS", 120));
         }},
    };
    for (const auto& [state, prepare] : states) {
        WindowHarness window;
        EXPECT_EQ(window.window()->minimumSize(), QSize(600, 690));
        EXPECT_EQ(window.window()->maximumWidth(), 900);
        window.window()->resize(600, 690);
        prepare(window.view);
        if (window.view.showResultsPage.get())
            window.openResults();
        window.settle();
        look(state, window);
    }
}

/// Text that can be read whole, and controls that can be pressed without pressing another.
void expectNothingCutOffOrCovered(const std::string& context) {
    inEveryState([&](const std::string& state, WindowHarness& window) {
        window.eachItem([&](const QQuickItem& item) {
            const QString text = item.property("text").toString();
            if (!item.isVisible() || !item.property("truncated").isValid() || text.isEmpty())
                return;
            const std::string where = context + ", " + state + ": " + text.toStdString();
            EXPECT_FALSE(item.property("truncated").toBool()) << where;
            const QRectF place = item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
            EXPECT_GE(place.left(), 0) << where;
            EXPECT_LE(place.right(), window.window()->width()) << where;
        });
        const std::set<QAccessible::Role> pressed{QAccessible::Button, QAccessible::RadioButton,
                                                  QAccessible::CheckBox, QAccessible::EditableText};
        const QQuickItem* page = window.window()->contentItem()->childItems().front();
        std::vector<WindowHarness::Control> controls = window.everything();
        std::erase_if(controls, [&](const auto& control) { // the results page covers the main page
            EXPECT_FALSE(control.name.isEmpty()) << state << ": role " << control.role;
            return !pressed.contains(control.role) ||
                   (window.view.showResultsPage.get() && page->isAncestorOf(control.item));
        });
        for (std::size_t i = 0; i < controls.size(); ++i)
            for (std::size_t j = i + 1; j < controls.size(); ++j) {
                const QRectF shared = controls[i].sceneRect().intersected(controls[j].sceneRect());
                EXPECT_FALSE(shared.width() > 1 && shared.height() > 1)
                    << context << ", " << state << ": " << controls[i].name.toStdString() << " and "
                    << controls[j].name.toStdString();
            }
    });
}

TEST(Layout, CutsOffAndCoversNothingAtTheLeastSize) {
    expectNothingCutOffOrCovered("as it is");
    // Letters a third wider stand for texts a third longer.
    const QFont plain = QGuiApplication::font();
    QFont wide = plain;
    wide.setStretch(133);
    QGuiApplication::setFont(wide);
    expectNothingCutOffOrCovered("a third longer");
    QGuiApplication::setFont(plain);
}

TEST(Layout, MovesNothingUnderThePointer) {
    WindowHarness window;
    const auto bottom = [&](const char* name) { return window.control(name).sceneRect().bottom(); };
    const double match = bottom("Match Playlist");
    window.view.scanProgress.set(0.5);
    window.view.scanningFileName.set("a.mp3");
    window.expectShown("a.mp3");
    EXPECT_EQ(bottom("Match Playlist"), match);
    window.openResults();
    const double save = bottom("Save Session");
    window.view.selectedExportFormat.set("virtualdj");
    window.settle();
    EXPECT_EQ(bottom("Save Session"), save);
}

TEST(Layout, TakesBackTheHeightOfTheResultsPageUnlessTheUserResized) {
    for (const int resized : {0, 820}) {
        WindowHarness window;
        window.window()->resize(720, 700);
        window.settle();
        const int least = window.window()->minimumHeight();
        window.view.showResultsPage.set(true);
        window.expectShown("Playlist Results");
        EXPECT_EQ(window.window()->height(), window.window()->minimumHeight());
        if (window.window()->minimumHeight() == least)
            GTEST_SKIP() << "the screen has no room for more";
        if (resized > 0)
            window.window()->setHeight(resized);
        window.view.showResultsPage.set(false);
        window.settle();
        EXPECT_EQ(window.window()->height(), resized > 0 ? resized : 700);
    }
}

TEST(Layout, ScrollsToWhatTheKeysReach) {
    WindowHarness window;
    window.window()->setMinimumHeight(200);
    window.window()->resize(600, 300);
    window.settle();
    for (int i = 0; i < 20 && window.focused() != "Wanted list"; ++i)
        window.key(Qt::Key_Tab);
    const QRectF place = window.control("Wanted list").sceneRect();
    EXPECT_GE(place.top(), 0);
    EXPECT_LE(place.bottom(), 300);
}

} // namespace
} // namespace orvalen::test
