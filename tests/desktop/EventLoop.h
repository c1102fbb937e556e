#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <chrono>
#include <functional>

namespace orvalen::test {

/// Turns the event loop until the condition holds; false when it does not within the time.
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

/// Turns the event loop for so long.
inline void turnFor(std::chrono::milliseconds time) {
    turnUntil([] { return false; }, time);
}

} // namespace orvalen::test
