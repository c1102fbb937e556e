#include "app/window/accessible/ItemAccessible.h"

#include <QQuickWindow>

namespace orvalen {

ItemAccessible::ItemAccessible(QQuickItem* item) : QAccessibleObject(item) {
    QObject::connect(item, &QQuickItem::enabledChanged, item, [item] {
        QAccessible::State changed;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(item, changed);
        QAccessible::updateAccessibility(&event);
    });
}

QWindow* ItemAccessible::window() const {
    return item().window();
}

QAccessibleInterface* ItemAccessible::parent() const {
    for (QQuickItem* it = item().parentItem(); it != nullptr; it = it->parentItem())
        if (QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(it))
            return interface;
    return QAccessible::queryAccessibleInterface(item().window());
}

QRect ItemAccessible::rect() const {
    return onScreen(wholeInWindow());
}

QAccessible::State ItemAccessible::state() const {
    const QQuickWindow* window = item().window();
    QAccessible::State state;
    state.disabled = !item().isEnabled();
    state.focused = item().hasActiveFocus();
    state.invisible = window == nullptr || !window->isVisible() || !item().isVisible() ||
                      item().width() <= 0 || item().height() <= 0;
    state.focusable = item().isEnabled() && !state.invisible;
    state.offscreen = state.invisible || seenInWindow().isEmpty();
    return state;
}

QRectF ItemAccessible::wholeInWindow() const {
    return item().mapRectToScene(QRectF(0, 0, item().width(), item().height()));
}

QRectF ItemAccessible::seenInWindow() const {
    if (item().window() == nullptr)
        return {};
    QRectF seen = wholeInWindow() & QRectF(QPointF(0, 0), item().window()->size());
    for (const QQuickItem* it = item().parentItem(); it != nullptr; it = it->parentItem())
        if (it->clip())
            seen &= it->mapRectToScene(QRectF(0, 0, it->width(), it->height()));
    return seen;
}

QRect ItemAccessible::onScreen(const QRectF& inWindow) const {
    const QQuickWindow* window = item().window();
    return window ? inWindow.toAlignedRect().translated(window->mapToGlobal(QPoint(0, 0))) : QRect();
}

} // namespace orvalen
