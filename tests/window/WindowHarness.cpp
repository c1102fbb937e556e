#include "window/WindowHarness.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

using Visit = std::function<void(QAccessibleInterface&, QQuickItem&)>;

bool isSeen(const QQuickItem& item) {
    for (const QQuickItem* it = &item; it != nullptr; it = it->parentItem())
        if (!it->isVisible() || it->opacity() == 0)
            return false;
    return item.width() > 0 && item.height() > 0;
}

void walk(QAccessibleInterface* interface, const Visit& visit) {
    if (interface == nullptr)
        return;
    if (auto* item = qobject_cast<QQuickItem*>(interface->object()); item != nullptr && isSeen(*item))
        visit(*interface, *item);
    for (int i = 0; i < interface->childCount(); ++i)
        walk(interface->child(i), visit);
}

void eachItemBelow(const QQuickItem& item, const std::function<void(const QQuickItem&)>& visit) {
    visit(item);
    for (const QQuickItem* child : item.childItems())
        eachItemBelow(*child, visit);
}

} // namespace

WindowHarness::WindowHarness() : window_(std::make_unique<MainWindow>(platform.view, log)) {
    window_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window()));
    window()->requestActivate();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window()));
    settle();
}

WindowHarness::~WindowHarness() = default;

void WindowHarness::settle() {
    // Waits for two notifications, because a view may write a field after the first one.
    QElapsedTimer clock;
    clock.start();
    do {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        platform.settle();
    } while (clock.elapsed() < 45);
}

bool WindowHarness::waitFor(const std::function<bool()>& condition) {
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > 10'000)
            return false;
        settle();
    }
    return true;
}

QRectF WindowHarness::Control::sceneRect() const {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

std::vector<WindowHarness::Control> WindowHarness::everything() const {
    std::vector<Control> found;
    walk(QAccessible::queryAccessibleInterface(window()),
         [&](QAccessibleInterface& interface, QQuickItem& item) {
             found.push_back({&item, interface.role(), interface.text(QAccessible::Name)});
         });
    return found;
}

std::vector<WindowHarness::Control> WindowHarness::all(const QString& name, QAccessible::Role role) const {
    std::vector<Control> found = everything();
    std::erase_if(found, [&](const Control& control) {
        return control.name != name || (role != QAccessible::NoRole && control.role != role);
    });
    return found;
}

WindowHarness::Control WindowHarness::control(const QString& name, QAccessible::Role role) {
    std::vector<Control> found;
    if (!waitFor([&] { return !(found = all(name, role)).empty(); })) {
        ADD_FAILURE() << "nothing on the window is called " << name.toStdString();
        return {window()->contentItem(), QAccessible::NoRole, {}};
    }
    return found.front();
}

void WindowHarness::expectShown(const QString& name, QAccessible::Role role) {
    control(name, role);
}

void WindowHarness::expectGone(const QString& name, QAccessible::Role role) {
    EXPECT_TRUE(waitFor([&] { return all(name, role).empty(); })) << name.toStdString();
}

void WindowHarness::expectFocused(const QString& name) {
    EXPECT_TRUE(waitFor([&] { return focused() == name; }))
        << focused().toStdString() << " instead of " << name.toStdString();
}

void WindowHarness::waitForRest(const QString& name) {
    QRectF before;
    EXPECT_TRUE(waitFor([&] { return before == std::exchange(before, control(name).sceneRect()); }));
}

void WindowHarness::openResults() {
    view.showResultsPage.set(true);
    waitForRest("Playlist Results");
    expectFocused("Results");
}

WindowHarness::Control WindowHarness::inRow(const QString& row, const QString& name) {
    const Control group = control(row, QAccessible::Grouping);
    for (const Control& candidate : all(name))
        if (group.item->isAncestorOf(candidate.item))
            return candidate;
    ADD_FAILURE() << row.toStdString() << " has no " << name.toStdString();
    return group;
}

void WindowHarness::click(const Control& control) {
    QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier, control.sceneRect().center().toPoint());
    settle();
}

void WindowHarness::press(const Control& control) {
    QAccessibleActionInterface* actions = control.interface()->actionInterface();
    ASSERT_NE(actions, nullptr);
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()))
        << control.name.toStdString() << " cannot be pressed";
    actions->doAction(QAccessibleActionInterface::pressAction());
    settle();
}

void WindowHarness::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window(), key, modifiers);
    settle();
}

void WindowHarness::type(const QString& text) {
    for (const QChar c : text) {
        QTest::sendKeyEvent(QTest::Click, window(), c == u'\n' ? Qt::Key_Return : Qt::Key_unknown, c,
                            Qt::NoModifier);
    }
    settle();
}

void WindowHarness::eachItem(const std::function<void(const QQuickItem&)>& visit) const {
    eachItemBelow(*window()->contentItem(), visit);
}

QString WindowHarness::focused() const {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(window()->activeFocusItem());
    return interface == nullptr ? QString() : interface->text(QAccessible::Name);
}

} // namespace orvalen::test
