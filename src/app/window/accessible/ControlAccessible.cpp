#include "app/window/accessible/ControlAccessible.h"

#include "app/window/accessible/EditorAccessible.h"
#include "app/window/accessible/ItemAccessible.h"
#include "app/window/accessible/ProgressAccessible.h"
#include "app/window/accessible/RowsAccessible.h"

namespace orvalen {
namespace {

/// The accessible interface of a Pressable, from its properties `spoken…`.
class ControlAccessible : public ItemAccessible, public QAccessibleActionInterface {
public:
    using ItemAccessible::ItemAccessible;

    QAccessible::Role role() const override {
        return static_cast<QAccessible::Role>(item().property("spokenRole").toInt());
    }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name          ? item().property("spokenName").toString()
               : kind == QAccessible::Description ? item().property("spokenDetail").toString()
                                                  : QString();
    }

    QAccessible::State state() const override {
        QAccessible::State state = ItemAccessible::state();
        const bool ticked = item().property("ticked").toBool();
        state.checkable = role() == QAccessible::CheckBox || role() == QAccessible::RadioButton;
        state.checked = state.checkable && ticked;
        state.selectable = role() == QAccessible::ListItem;
        state.selected = state.selectable && ticked;
        const QVariant expanded = item().property("spokenExpanded");
        state.expandable = expanded.isValid();
        state.expanded = expanded.toBool();
        state.collapsed = state.expandable && !state.expanded;
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
};

QAccessibleInterface* makeControlAccessible(const QString&, QObject* object) {
    auto* item = qobject_cast<QQuickItem*>(object);
    if (item == nullptr)
        return nullptr;
    if (item->metaObject()->indexOfProperty("spokenRole") >= 0)
        return new ControlAccessible(item);
    if (item->metaObject()->indexOfProperty("spokenEditorName") >= 0)
        return new EditorAccessible(item);
    if (item->metaObject()->indexOfProperty("spokenListName") >= 0)
        return new RowsAccessible(item);
    if (item->metaObject()->indexOfProperty("spokenProgress") >= 0)
        return new ProgressAccessible(item);
    return nullptr;
}

} // namespace

void installControlAccessible() {
    QAccessible::installFactory(makeControlAccessible);
}

} // namespace orvalen
