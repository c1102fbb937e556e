#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // No display, no graphics card, no accessibility bus: the window draws into memory.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
