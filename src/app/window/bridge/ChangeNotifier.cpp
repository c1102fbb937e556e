#include "app/window/bridge/ChangeNotifier.h"

#include <algorithm>

namespace orvalen {
namespace {

constexpr qint64 shortestInterval = 16;

} // namespace

ChangeNotifier::ChangeNotifier() {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &ChangeNotifier::notifyViews);
}

void ChangeNotifier::schedule() {
    if (timer_.isActive())
        return;
    const qint64 elapsed = sinceLast_.isValid() ? sinceLast_.elapsed() : shortestInterval;
    timer_.start(static_cast<int>(std::clamp<qint64>(shortestInterval - elapsed, 0, shortestInterval)));
}

void ChangeNotifier::notifyViews() {
    sinceLast_.start();
    emit notified();
}

} // namespace orvalen
