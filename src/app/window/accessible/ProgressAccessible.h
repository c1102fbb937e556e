#pragma once

#include "app/window/accessible/ItemAccessible.h"

namespace orvalen {

/// A progress bar. Its name is the property `label`. Its property `value` (0 to 1) is reported in percent.
class ProgressAccessible : public ItemAccessible, public QAccessibleValueInterface {
public:
    using ItemAccessible::ItemAccessible;

    QAccessible::Role role() const override { return QAccessible::ProgressBar; }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name          ? item().property("label").toString()
               : kind == QAccessible::Description ? QString::number(percent()) + " %"
                                                  : QString();
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
    }

    QVariant currentValue() const override { return percent(); }
    void setCurrentValue(const QVariant&) override {}
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return 100; }
    QVariant minimumStepSize() const override { return 1; }

private:
    int percent() const { return qRound(item().property("value").toDouble() * 100); }
};

} // namespace orvalen
