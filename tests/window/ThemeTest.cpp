#include "window/WindowHarness.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlComponent>
#include <QQmlEngine>
#include <gtest/gtest.h>
#include <memory>

namespace orvalen::test {
namespace {

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
        {"#000000", "#efefef"},                         // the toolkit's own light
        {"#555555", "#f6f2ea"},                         // grey on a warm light
        {"#ffffff", "#000000"}, {"#8fa3bf", "#0b1020"}, // a blue night
        {"#ffffff", "#4a4a4a"},                         // a middling grey
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
