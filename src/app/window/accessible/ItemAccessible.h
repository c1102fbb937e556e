#pragma once

#include <QAccessibleObject>
#include <QQuickItem>
#include <QRectF>

namespace orvalen {

/// The basic accessible interface of an item: its position, parent and visibility. It has no children.
class ItemAccessible : public QAccessibleObject {
public:
    explicit ItemAccessible(QQuickItem* item);

    QWindow* window() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QRect rect() const override;
    QAccessible::State state() const override;

protected:
    QQuickItem& item() const { return *static_cast<QQuickItem*>(object()); }
    /// Returns the item's area in the window's coordinates.
    QRectF wholeInWindow() const;
    /// Returns the part of that area that no ancestor clips; empty if it is scrolled out of sight.
    QRectF seenInWindow() const;
    QRect onScreen(const QRectF& inWindow) const;
};

} // namespace orvalen
