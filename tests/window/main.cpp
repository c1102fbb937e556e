#include "desktop/PrivateBus.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Without a display, graphics card or desktop: the window draws into memory and uses a private bus.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    testing::InitGoogleTest(&argc, argv);
    const orvalen::test::PrivateBus bus;
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
