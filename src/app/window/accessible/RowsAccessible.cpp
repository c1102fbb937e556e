#include "app/window/accessible/RowsAccessible.h"

#include <algorithm>

namespace orvalen {
namespace {

int placeOf(const QQuickItem* row) {
    return row->property("index").toInt();
}

} // namespace

QString RowsAccessible::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? item().property("spokenListName").toString() : QString();
}

QList<QQuickItem*> RowsAccessible::rows() const {
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
    std::sort(rows.begin(), rows.end(),
              [](const QQuickItem* left, const QQuickItem* right) { return placeOf(left) < placeOf(right); });
    return rows;
}

int RowsAccessible::childCount() const {
    return static_cast<int>(rows().size());
}

QAccessibleInterface* RowsAccessible::child(int place) const {
    return QAccessible::queryAccessibleInterface(rows().value(place));
}

int RowsAccessible::indexOfChild(const QAccessibleInterface* row) const {
    return static_cast<int>(rows().indexOf(row == nullptr ? nullptr : row->object()));
}

QAccessibleInterface* RowsAccessible::childAt(int x, int y) const {
    for (QQuickItem* row : rows())
        if (QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(row);
            interface != nullptr && interface->rect().contains(x, y))
            return interface;
    return nullptr;
}

} // namespace orvalen
