#include "core/LibraryIndexBuilder.h"

#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlComponent>
#include <QQmlEngine>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace orvalen::test {
namespace {

/// Shows the states one after another at the smallest size and calls `look` for each.
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

/// Expects that no text is cut off and that no control covers another.
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
    // Letters that are a third wider simulate texts that are a third longer.
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
    window.view.matchInput.set("no dash here");
    window.expectShown("Lines that are left out");
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
        ASSERT_GT(window.window()->minimumHeight(), least) << "the screen has no room for more";
        EXPECT_EQ(window.window()->height(), window.window()->minimumHeight());
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

constexpr auto marked = "<b>x</b><img src='http://a.example/x.png'>&amp;";

/// Text from outside is shown unchanged: no view interprets it as markup or loads a picture.
TEST(PlainText, IsWhatEveryViewShows) {
    WindowHarness window;
    window.view.musicFolderURLs.set({{std::string("/Music/") + marked}});
    window.view.scanProgress.set(0.5);
    window.view.scanningFileName.set(marked);
    window.view.matchInput.set(marked);
    window.view.matchedTracks.set(
        {row(marked, marked, {track(marked, marked, 120), track(marked, "other", {})}), row(marked, "none")});
    window.openResults();
    EXPECT_TRUE(window.shows(QString("File: /Music/%1 - %1.mp3").arg(marked)));
    window.click(window.inRow(QString("%1 – %1").arg(marked), "Choose match"));
    window.expectShown("Choose match", QAccessible::List);

    int texts = 0;
    int withMarkup = 0;
    window.eachItem([&](const QQuickItem& item) {
        const QVariant format = item.property("textFormat");
        if (!format.isValid())
            return;
        const QString text = item.property("text").toString();
        ++texts;
        withMarkup += text.contains(marked);
        EXPECT_EQ(format.toInt(), int(Qt::PlainText)) << text.toStdString();
    });
    EXPECT_GT(texts, 40) << "the whole window was looked at";
    EXPECT_GE(withMarkup, 6) << "and the texts from outside are in it";
}

constexpr auto leastContrast = R"(
import QtQuick
import Orvalen
QtObject {
    readonly property var pairs: [
        [["text", "secondary"], ["controlHovered", "track"]],
        [["text", "secondary", "accentText", "danger", "success"], ["window", "panel", "inset", "control"]],
        [["accentInk"], ["accent", "accentHovered", "accentPressed"]]]
    readonly property real blackOnWhite: Theme.contrast(Qt.rgba(0, 0, 0, 1), Qt.rgba(1, 1, 1, 1))
    readonly property real least: {
        let least = 21
        for (const [texts, surfaces] of pairs)
            for (const text of texts)
                for (const surface of surfaces)
                    least = Math.min(least, Theme.contrast(Theme[text], Theme[surface]))
        return least
    }
})";

TEST(Theme, CanBeReadUnderEveryPalette) {
    WindowHarness window;
    QQmlComponent component(qmlEngine(window.window()));
    component.setData(leastContrast, QUrl());
    const std::unique_ptr<QObject> theme(component.create());
    ASSERT_NE(theme, nullptr) << component.errorString().toStdString();
    EXPECT_NEAR(theme->property("blackOnWhite").toDouble(), 21, 0.01);
    const QColor palettes[][2] = {
        {"#000000", "#efefef"},                         // Qt's light palette
        {"#555555", "#f6f2ea"},                         // grey on warm white
        {"#ffffff", "#000000"}, {"#8fa3bf", "#0b1020"}, // light blue on dark blue
        {"#ffffff", "#4a4a4a"},                         // white on medium grey
    };
    for (const auto& [ink, paper] : palettes) {
        QPalette palette;
        palette.setColor(QPalette::Window, paper);
        palette.setColor(QPalette::WindowText, ink);
        QGuiApplication::setPalette(palette);
        window.settle();
        EXPECT_EQ(window.window()->color(), paper) << "the change was not followed at once";
        EXPECT_GE(theme->property("least").toDouble(), 4.5) << paper.name().toStdString();
    }
    QGuiApplication::setPalette(QPalette());
}

} // namespace
} // namespace orvalen::test
