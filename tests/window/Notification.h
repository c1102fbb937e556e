#pragma once

#include "app/window/bridge/ChangeNotifier.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace orvalen::test {

/// Waits until the notifier has reported all writes before this call.
inline void waitForNotification(ChangeNotifier& notifier) {
    QSignalSpy notified(&notifier, &ChangeNotifier::notified);
    notifier.schedule();
    EXPECT_TRUE(notified.wait());
}

} // namespace orvalen::test
