#pragma once

#include "app/window/accessible/ItemAccessible.h"

#include <algorithm>

namespace orvalen {

/// A list view. Its name is the property `spokenListName`. Its children are the visible rows in the model's
/// order; a row's property `index` is its position. Qt's own interface returns rows in the order of creation,
/// including rows that wait for reuse.
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
            QQuickItem* shown = nullptr; // skips rows that wait for reuse
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
