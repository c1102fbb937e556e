#include "desktop/EventLoop.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

namespace orvalen::test {

bool turnUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline(limit);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void turnFor(std::chrono::milliseconds time) {
    turnUntil([] { return false; }, time);
}

} // namespace orvalen::test
