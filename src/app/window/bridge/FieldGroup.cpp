#include "app/window/bridge/FieldGroup.h"

#include <utility>

namespace orvalen {

FieldGroup::FieldGroup(ContentView& view, ChangeNotifier& notifier) : view_(view), notifier_(notifier) {
    connect(&notifier, &ChangeNotifier::notified, this, [this] {
        if (std::exchange(dirty_, false))
            refresh();
    });
}

void FieldGroup::refresh() {
    emit changed();
}

void FieldGroup::markDirty() {
    dirty_ = true;
    notifier_.schedule();
}

void FieldGroup::later(std::function<void(ContentView&)> operation) {
    QMetaObject::invokeMethod(
        this, [this, operation = std::move(operation)] { operation(view_); }, Qt::QueuedConnection);
}

} // namespace orvalen
