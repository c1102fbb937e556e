#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <chrono>
#include <functional>

namespace orvalen::test {

/// Runs the event loop until the condition is true. Returns false if it is still false after `limit`.
inline bool turnUntil(const std::function<bool()>& condition,
                      std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    const QDeadlineTimer deadline(limit);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

/// Runs the event loop for this time.
inline void turnFor(std::chrono::milliseconds time) {
    turnUntil([] { return false; }, time);
}

} // namespace orvalen::test
