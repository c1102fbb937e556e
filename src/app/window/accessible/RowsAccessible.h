#pragma once

#include "app/window/accessible/ItemAccessible.h"

namespace orvalen {

/// A list view named by its property `spokenListName`. Its children are the rows that show an entry of the
/// model, in the model's order; the toolkit's own would give them in the order of creation, with those that
/// wait for reuse among them. A row's property `index` is its place in the model.
class RowsAccessible : public ItemAccessible {
public:
    using ItemAccessible::ItemAccessible;

    QAccessible::Role role() const override { return QAccessible::List; }
    QString text(QAccessible::Text kind) const override;
    int childCount() const override;
    QAccessibleInterface* child(int place) const override;
    int indexOfChild(const QAccessibleInterface* row) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QRect rect() const override { return onScreen(seenInWindow()); }

private:
    QList<QQuickItem*> rows() const;
};

} // namespace orvalen
