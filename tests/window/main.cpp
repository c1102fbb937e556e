#include "desktop/PrivateBus.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // No display, no graphics card, no desktop: the window draws into memory and talks to a bus of its own.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    testing::InitGoogleTest(&argc, argv);
    const orvalen::test::PrivateBus bus;
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
