#include "app/window/ControlAccessible.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QQuickItem>
#include <QQuickWindow>

namespace orvalen {
namespace {

/// A control without children, described by the `spoken…` properties of Pressable.
class ControlAccessible : public QAccessibleObject, public QAccessibleActionInterface {
public:
    explicit ControlAccessible(QQuickItem* item) : QAccessibleObject(item) {
        QObject::connect(item, &QQuickItem::enabledChanged, item, [item] {
            QAccessible::State changed;
            changed.disabled = true;
            QAccessibleStateChangeEvent event(item, changed);
            QAccessible::updateAccessibility(&event);
        });
    }

    QWindow* window() const override { return item().window(); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    QAccessibleInterface* parent() const override {
        for (QQuickItem* it = item().parentItem(); it != nullptr; it = it->parentItem())
            if (QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(it))
                return interface;
        return QAccessible::queryAccessibleInterface(item().window());
    }

    QAccessible::Role role() const override {
        return static_cast<QAccessible::Role>(item().property("spokenRole").toInt());
    }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name          ? item().property("spokenName").toString()
               : kind == QAccessible::Description ? item().property("spokenDetail").toString()
                                                  : QString();
    }

    QRect rect() const override {
        const QQuickWindow* window = item().window();
        if (window == nullptr)
            return {};
        const QRectF place = item().mapRectToScene(QRectF(0, 0, item().width(), item().height()));
        return place.toAlignedRect().translated(window->mapToGlobal(QPoint(0, 0)));
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.disabled = !item().isEnabled();
        state.focusable = item().isEnabled();
        state.focused = item().hasActiveFocus();
        state.invisible = !isVisible();
        state.offscreen = state.invisible || !isInSight();
        const bool ticked = item().property("ticked").toBool();
        state.checkable = role() == QAccessible::CheckBox || role() == QAccessible::RadioButton;
        state.checked = state.checkable && ticked;
        state.selectable = role() == QAccessible::ListItem;
        state.selected = state.selectable && ticked;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override {
        QStringList names{pressAction()};
        if (state().checkable)
            names.append(toggleAction());
        return names;
    }

    void doAction(const QString& name) override {
        if (item().isEnabled() && actionNames().contains(name))
            QMetaObject::invokeMethod(object(), "clicked");
    }

    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QQuickItem& item() const { return *static_cast<QQuickItem*>(object()); }

    bool isVisible() const {
        return item().window() != nullptr && item().window()->isVisible() && item().isVisible() &&
               item().width() > 0 && item().height() > 0;
    }

    /// Not scrolled away: what shows through every clip above it is not empty.
    bool isInSight() const {
        QRectF seen = item().mapRectToScene(QRectF(0, 0, item().width(), item().height()));
        seen &= QRectF(QPointF(0, 0), item().window()->size());
        for (const QQuickItem* it = item().parentItem(); it != nullptr; it = it->parentItem())
            if (it->clip())
                seen &= it->mapRectToScene(QRectF(0, 0, it->width(), it->height()));
        return !seen.isEmpty();
    }
};

QAccessibleInterface* makeControlAccessible(const QString&, QObject* object) {
    auto* item = qobject_cast<QQuickItem*>(object);
    const bool speaks = item != nullptr && item->metaObject()->indexOfProperty("spokenRole") >= 0;
    return speaks ? new ControlAccessible(item) : nullptr;
}

} // namespace

void installControlAccessible() {
    QAccessible::installFactory(makeControlAccessible);
}

} // namespace orvalen
