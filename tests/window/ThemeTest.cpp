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
    struct Case {
        const char* what;
        QColor text;
        QColor window;
    };
    const std::vector<Case> cases{
        {"the toolkit's own light", "#000000", "#efefef"},
        {"white", "#000000", "#ffffff"},
        {"a warm light with grey text", "#555555", "#f6f2ea"},
        {"a dark", "#fcfcfc", "#2a2e32"},
        {"black", "#ffffff", "#000000"},
        {"a blue night", "#8fa3bf", "#0b1020"},
        {"a middling grey", "#ffffff", "#4a4a4a"},
    };
    WindowHarness window;
    QQmlComponent component(qmlEngine(window.window()));
    component.setData("import QtQml; import Orvalen; QtObject { property QtObject theme: Theme }", QUrl());
    const std::unique_ptr<QObject> holder(component.create());
    ASSERT_NE(holder, nullptr) << component.errorString().toStdString();
    const auto* theme = holder->property("theme").value<QObject*>();
    const auto colour = [&](const char* name) { return theme->property(name).value<QColor>(); };

    for (const Case& row : cases) {
        QGuiApplication::setPalette([&] {
            QPalette palette;
            palette.setColor(QPalette::Window, row.window);
            palette.setColor(QPalette::WindowText, row.text);
            return palette;
        }());
        window.settle();
        EXPECT_EQ(colour("window"), row.window) << row.what << ": the change was not followed at once";
        EXPECT_EQ(window.window()->color(), row.window) << row.what;
        for (const char* text : {"text", "secondary"})
            for (const char* surface : {"controlHovered", "track"})
                EXPECT_GE(contrast(colour(text), colour(surface)), 4.5)
                    << row.what << ": " << text << " on " << surface;
        for (const char* text : {"text", "secondary", "accentText", "danger", "success"})
            for (const char* surface : {"window", "panel", "inset", "control"})
                EXPECT_GE(contrast(colour(text), colour(surface)), 4.5)
                    << row.what << ": " << text << " on " << surface;
        for (const char* fill : {"accent", "accentHovered", "accentPressed"})
            EXPECT_GE(contrast(colour("accentInk"), colour(fill)), 4.5) << row.what << ": " << fill;
    }
    QGuiApplication::setPalette(QPalette());
}

} // namespace
} // namespace orvalen::test
