#include "app/window/bridge/LibraryState.h"
#include "support/TestPlatform.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

TEST(ChangeNotifier, TellsTheViewsSixtyTimesASecondAtMost) {
    TestPlatform platform;
    ChangeNotifier notifier;
    LibraryState library(platform.view, notifier);
    const QSignalSpy told(&library, &StateProperties::changed);

    QElapsedTimer clock;
    clock.start();
    int writes = 0;
    while (clock.elapsed() < 300) {
        platform.view.scanProgress.set(++writes * 1e-9);
        QCoreApplication::processEvents();
    }
    EXPECT_GT(writes, 1000);
    EXPECT_GE(told.count(), 5);
    EXPECT_LE(told.count(), 20);

    platform.view.scanProgress.set(0.5);
    while (clock.elapsed() < 400)
        QCoreApplication::processEvents();
    EXPECT_EQ(library.scanProgress(), 0.5);
    const auto atRest = told.count();
    while (clock.elapsed() < 450)
        QCoreApplication::processEvents();
    EXPECT_EQ(told.count(), atRest) << "nothing was written, nothing is told";
}

} // namespace
} // namespace orvalen::test
