#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <QFont>
#include <QGuiApplication>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace orvalen::test {
namespace {

void eachItem(QQuickItem& item, const std::function<void(QQuickItem&)>& visit) {
    if (!item.isVisible())
        return;
    visit(item);
    for (QQuickItem* child : item.childItems())
        eachItem(*child, visit);
}

struct Case {
    const char* what;
    std::function<void(ContentView&)> prepare;
};

const std::vector<Case>& cases() {
    static const auto full = [](ContentView& view) {
        replaceIndex(view, buildIndex(std::vector{track("a", "b", 1, "/Music/a.mp3")}));
        view.musicFolderURLs.set({{"/Music"}, {"/Other"}, {"/More"}});
    };
    static const std::vector<Case> all{
        {"empty", [](ContentView&) {}},
        {"folders, scanning",
         [](ContentView& view) {
             full(view);
             view.scanProgress.set(0.5);
             view.scanningFileName.set("a.mp3");
         }},
        {"matching",
         [](ContentView& view) {
             full(view);
             view.isMatching.set(true);
             view.matchProgress.set(0.5);
         }},
        {"playlist address", [](ContentView& view) { view.inputMode.set(InputMode::spotify); }},
        {"event list", [](ContentView& view) { view.inputMode.set(InputMode::djep); }},
        {"results",
         [](ContentView& view) {
             view.matchedTracks.set(
                 {row("ABBA", "SOS", {track("ABBA", "SOS", 120), track("ABBA", "SOS", 121, "/x")})});
             view.selectedExportFormat.set("virtualdj");
             view.showResultsPage.set(true);
             view.selectedTrack.set(track("ABBA", "SOS", 120));
         }},
    };
    return all;
}

void expectNothingCutOff(const std::string& context) {
    for (const Case& state : cases()) {
        WindowHarness window;
        window.window()->resize(600, 690);
        state.prepare(window.view);
        QTest::qWait(350);
        window.settle();
        eachItem(*window.window()->contentItem(), [&](QQuickItem& item) {
            const QString text = item.property("text").toString();
            if (!item.property("truncated").isValid() || text.isEmpty())
                return;
            const std::string where = context + ", " + state.what + ": " + text.toStdString();
            EXPECT_FALSE(item.property("truncated").toBool()) << where;
            const QRectF place = item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
            EXPECT_GE(place.left(), 0) << where;
            EXPECT_LE(place.right(), window.window()->width()) << where;
        });
    }
}

TEST(Layout, CutsNothingOffAtTheLeastSize) {
    expectNothingCutOff("as it is");
    // Letters a third wider stand for texts a third longer.
    const QFont plain = QGuiApplication::font();
    QFont wide = plain;
    wide.setStretch(133);
    QGuiApplication::setFont(wide);
    expectNothingCutOff("a third longer");
    QGuiApplication::setFont(plain);
}

TEST(Layout, NothingOverlapsInOneColumn) {
    for (const Case& state : cases()) {
        WindowHarness window;
        window.window()->resize(600, 690);
        state.prepare(window.view);
        QTest::qWait(350);
        window.settle();
        // Controls that can be pressed never share a place, unless one page covers the other.
        std::vector<WindowHarness::Control> controls = window.everything();
        const bool sheet = window.view.showResultsPage.get();
        std::erase_if(controls, [&](const auto& control) {
            return (control.role != QAccessible::Button && control.role != QAccessible::RadioButton &&
                    control.role != QAccessible::CheckBox && control.role != QAccessible::EditableText) ||
                   (sheet &&
                    window.window()->contentItem()->childItems().front()->isAncestorOf(control.item));
        });
        for (std::size_t i = 0; i < controls.size(); ++i)
            for (std::size_t j = i + 1; j < controls.size(); ++j) {
                const QRectF shared = controls[i].sceneRect().intersected(controls[j].sceneRect());
                EXPECT_FALSE(shared.width() > 1 && shared.height() > 1)
                    << state.what << ": " << controls[i].name.toStdString() << " and "
                    << controls[j].name.toStdString();
            }
    }
}

TEST(Layout, TakesOnlySizesThatTheContentAllows) {
    WindowHarness window;
    EXPECT_EQ(window.window()->minimumSize(), QSize(600, 690));
    EXPECT_EQ(window.window()->maximumWidth(), 900);
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
