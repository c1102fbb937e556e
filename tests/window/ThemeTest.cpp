#include "window/WindowHarness.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlComponent>
#include <QQmlEngine>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace orvalen::test {
namespace {

double luminance(const QColor& colour) {
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& left, const QColor& right) {
    const double a = luminance(left);
    const double b = luminance(right);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

TEST(Theme, CanBeReadUnderEveryPalette) {
    WindowHarness window;
    QQmlComponent component(qmlEngine(window.window()));
    component.setData("import QtQml; import Orvalen; QtObject { property QtObject theme: Theme }", QUrl());
    const std::unique_ptr<QObject> holder(component.create());
    ASSERT_NE(holder, nullptr) << component.errorString().toStdString();
    const auto* theme = holder->property("theme").value<QObject*>();
    const auto colour = [&](const char* name) { return theme->property(name).value<QColor>(); };

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
        const auto expectReadable = [&](const std::vector<const char*>& texts,
                                        const std::vector<const char*>& surfaces) {
            for (const char* text : texts)
                for (const char* surface : surfaces)
                    EXPECT_GE(contrast(colour(text), colour(surface)), 4.5)
                        << paper.name().toStdString() << ": " << text << " on " << surface;
        };
        expectReadable({"text", "secondary"}, {"controlHovered", "track"});
        expectReadable({"text", "secondary", "accentText", "danger", "success"},
                       {"window", "panel", "inset", "control"});
        expectReadable({"accentInk"}, {"accent", "accentHovered", "accentPressed"});
    }
    QGuiApplication::setPalette(QPalette());
}

} // namespace
} // namespace orvalen::test
