#include "app/window/bridge/FieldGroup.h"

#include <utility>

namespace orvalen {

FieldGroup::FieldGroup(ContentView& view, Announcer& announcer) : view_(view), announcer_(announcer) {
    connect(&announcer, &Announcer::turn, this, [this] {
        if (std::exchange(dirty_, false))
            refresh();
    });
}

void FieldGroup::refresh() {
    emit changed();
}

void FieldGroup::markDirty() {
    dirty_ = true;
    announcer_.wake();
}

void FieldGroup::later(std::function<void(ContentView&)> operation) {
    QMetaObject::invokeMethod(
        this, [this, operation = std::move(operation)] { operation(view_); }, Qt::QueuedConnection);
}

} // namespace orvalen
