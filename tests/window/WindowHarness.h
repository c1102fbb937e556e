#pragma once

#include "app/window/MainWindow.h"
#include "platform/system/ConsoleLog.h"
#include "support/TestPlatform.h"

#include <QAccessible>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

namespace orvalen::test {

/// The real window over the real state and a fake platform, used as a person or a screen reader would: things
/// are found by what the accessibility tree calls them, and clicked with real events.
class WindowHarness {
public:
    WindowHarness();
    ~WindowHarness();

    /// Runs events, posts and jobs until the window has nothing more to say. Animations are not waited for.
    void settle();
    /// Waits until it is true, for ten seconds at most; false when it did not become true.
    bool waitFor(const std::function<bool()>& condition);
    /// Opens the results page and waits until it has come to rest.
    void openResults();

    /// A control of the accessibility tree.
    struct Control {
        QPointer<QQuickItem> item;
        QAccessible::Role role;
        QString name;

        QAccessible::State state() const;
        QString description() const;
        bool enabled() const { return !state().disabled; }
        bool checked() const { return state().checked; }
        QRectF sceneRect() const;
    };

    /// Every visible control of that name, in tree order; of any role when none is given.
    std::vector<Control> all(const QString& name, QAccessible::Role role = QAccessible::NoRole) const;
    std::vector<Control> everything() const;
    bool shows(const QString& name) const { return !all(name).empty(); }
    /// The first of that name, as soon as there is one; the test fails when none comes.
    Control control(const QString& name, QAccessible::Role role = QAccessible::NoRole);
    // Wait for it; the test fails when it does not come or go.
    void expectShown(const QString& name, QAccessible::Role role = QAccessible::NoRole);
    void expectGone(const QString& name, QAccessible::Role role = QAccessible::NoRole);
    void expectFocused(const QString& name);
    /// Waits until it no longer moves.
    void waitForRest(const QString& name);
    /// The control of that name in the result row of that label.
    Control inRow(const QString& row, const QString& name);

    /// With the mouse, in the middle.
    void click(const Control& control);
    void click(const QString& name) { click(control(name)); }
    /// As a screen reader does.
    void press(const Control& control);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString& text);
    /// What the keys act on; its accessible name.
    QString focused() const;

    QQuickWindow* window() const { return window_->window(); }
    /// Every item, shown or not.
    void eachItem(const std::function<void(const QQuickItem&)>& visit) const;

    TestPlatform platform;
    ContentView& view = platform.view;
    ConsoleLog log{platform.console}; ///< what the window shows; the state writes to platform.console

private:
    std::unique_ptr<MainWindow> window_;
};

} // namespace orvalen::test
