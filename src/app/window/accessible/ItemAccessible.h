#pragma once

#include <QAccessibleObject>
#include <QQuickItem>
#include <QRectF>

namespace orvalen {

/// What any item of the window tells a screen reader: its place, what it stands in, and whether it can be
/// seen. It has no children.
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
    /// In the window's coordinates.
    QRectF wholeInWindow() const;
    /// What shows of it through every clip above it; empty when it is scrolled away.
    QRectF seenInWindow() const;
    QRect onScreen(const QRectF& inWindow) const;
};

} // namespace orvalen
