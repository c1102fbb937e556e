#pragma once

#include "app/window/accessible/ItemAccessible.h"

#include <algorithm>

namespace orvalen {

/// A list view named by its property `spokenListName`. Its children are the rows that show an entry of the
/// model, in the model's order; the toolkit's own would give them in the order of creation, with those that
/// wait for reuse among them. A row's property `index` is its place in the model.
class RowsAccessible : public ItemAccessible {
public:
    using ItemAccessible::ItemAccessible;

    QAccessible::Role role() const override { return QAccessible::List; }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? item().property("spokenListName").toString() : QString();
    }
    int childCount() const override { return static_cast<int>(rows().size()); }
    QAccessibleInterface* child(int place) const override {
        return QAccessible::queryAccessibleInterface(rows().value(place));
    }
    int indexOfChild(const QAccessibleInterface* row) const override {
        return static_cast<int>(rows().indexOf(row == nullptr ? nullptr : row->object()));
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (QQuickItem* row : rows())
            if (QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(row);
                interface != nullptr && interface->rect().contains(x, y))
                return interface;
        return nullptr;
    }
    QRect rect() const override { return onScreen(seenInWindow()); }

private:
    static int placeOf(const QQuickItem* row) { return row->property("index").toInt(); }

    QList<QQuickItem*> rows() const {
        const auto* content = item().property("contentItem").value<QQuickItem*>();
        QList<QQuickItem*> rows;
        if (content == nullptr)
            return rows;
        for (QQuickItem* candidate : content->childItems()) {
            if (!candidate->property("index").isValid())
                continue;
            QQuickItem* shown = nullptr; // a row that waits for reuse is not the one at its index
            QMetaObject::invokeMethod(object(), "itemAtIndex", Q_RETURN_ARG(QQuickItem*, shown),
                                      Q_ARG(int, placeOf(candidate)));
            if (shown == candidate)
                rows.append(candidate);
        }
        std::ranges::sort(rows, {}, placeOf);
        return rows;
    }
};

} // namespace orvalen
