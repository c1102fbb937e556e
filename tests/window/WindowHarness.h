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

/// The real window with the real state and a fake platform. Finds controls by their names in the
/// accessibility tree, like a screen reader, and clicks them with real events.
class WindowHarness {
public:
    WindowHarness();
    ~WindowHarness();

    /// Runs events, posts and jobs until none are left. Does not wait for animations.
    void settle();
    /// Waits until the condition is true, at most ten seconds. Returns false if it is still false.
    bool waitFor(const std::function<bool()>& condition);
    /// Opens the results page and waits for the end of its animation.
    void openResults();

    /// A control of the accessibility tree.
    struct Control {
        QPointer<QQuickItem> item;
        QAccessible::Role role;
        QString name;

        QAccessibleInterface* interface() const { return QAccessible::queryAccessibleInterface(item); }
        QString description() const { return interface()->text(QAccessible::Description); }
        bool enabled() const { return !interface()->state().disabled; }
        bool checked() const { return interface()->state().checked; }
        QRectF sceneRect() const;
    };

    /// Returns all visible controls with the name, in tree order. Without a role, of any role.
    std::vector<Control> all(const QString& name, QAccessible::Role role = QAccessible::NoRole) const;
    std::vector<Control> everything() const;
    bool shows(const QString& name) const { return !all(name).empty(); }
    /// Waits for a control with the name and returns the first. The test fails if no control appears.
    Control control(const QString& name, QAccessible::Role role = QAccessible::NoRole);
    // Wait until the control appears or disappears. The test fails if it does not.
    void expectShown(const QString& name, QAccessible::Role role = QAccessible::NoRole);
    void expectGone(const QString& name, QAccessible::Role role = QAccessible::NoRole);
    void expectFocused(const QString& name);
    /// Waits until the control no longer moves.
    void waitForRest(const QString& name);
    /// Returns the control with the name in the row with the label.
    Control inRow(const QString& row, const QString& name);

    /// Clicks the centre of the control with the mouse.
    void click(const Control& control);
    void click(const QString& name) { click(control(name)); }
    /// Presses the control as a screen reader does.
    void press(const Control& control);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString& text);
    /// Returns the accessible name of the focused control.
    QString focused() const;

    QQuickWindow* window() const { return window_->window(); }
    /// Visits every item, visible or not.
    void eachItem(const std::function<void(const QQuickItem&)>& visit) const;

    TestPlatform platform;
    ContentView& view = platform.view;
    ConsoleLog log{platform.console}; ///< the log of the window; the state writes to platform.console

private:
    std::unique_ptr<MainWindow> window_;
};

} // namespace orvalen::test
