#include "app/window/bridge/StateProperties.h"

#include <utility>

namespace orvalen {

StateProperties::StateProperties(ContentView& view, ChangeNotifier& notifier)
    : view_(view), notifier_(notifier) {
    connect(&notifier, &ChangeNotifier::notified, this, [this] {
        if (std::exchange(dirty_, false))
            refresh();
    });
}

void StateProperties::refresh() {
    emit changed();
}

void StateProperties::markDirty() {
    dirty_ = true;
    notifier_.schedule();
}

void StateProperties::later(std::function<void(ContentView&)> operation) {
    QMetaObject::invokeMethod(
        this, [this, operation = std::move(operation)] { operation(view_); }, Qt::QueuedConnection);
}

} // namespace orvalen
