#include "app/window/bridge/Announcer.h"

#include <algorithm>

namespace orvalen {
namespace {

constexpr qint64 shortestInterval = 16;

} // namespace

Announcer::Announcer() {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Announcer::announce);
}

void Announcer::wake() {
    if (timer_.isActive())
        return;
    const qint64 elapsed = sinceLast_.isValid() ? sinceLast_.elapsed() : shortestInterval;
    timer_.start(static_cast<int>(std::clamp<qint64>(shortestInterval - elapsed, 0, shortestInterval)));
}

void Announcer::announce() {
    sinceLast_.start();
    emit turn();
}

} // namespace orvalen
