#include "window/WindowHarness.h"

#include <QClipboard>
#include <QGuiApplication>
#include <gtest/gtest.h>
#include <thread>

namespace orvalen::test {
namespace {

QString clipboard() {
    return QGuiApplication::clipboard()->text();
}

TEST(LogPage, ShowsTheLinesOfThisRunAndCountsThoseThatWereNotSeen) {
    WindowHarness ui;
    std::jthread([&ui] {
        for (const char* line : {"first", "Failed to save session: No space left on device", "<b>third</b>"})
            ui.log.line(line);
    }).join();
    ui.click("Log (3)");
    ui.expectShown("<b>third</b>");
    ui.log.line("while it is open");
    ui.expectShown("while it is open");

    ui.click("Copy All");
    EXPECT_EQ(clipboard(),
              "first\nFailed to save session: No space left on device\n<b>third</b>\nwhile it is open\n");
    ui.click("Failed to save session: No space left on device");
    ui.key(Qt::Key_Down, Qt::ShiftModifier);
    ui.key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "Failed to save session: No space left on device\n<b>third</b>\n");
    ui.key(Qt::Key_Home);
    ui.key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "first\n");

    ui.key(Qt::Key_Escape);
    ui.expectGone("first");
    ui.expectShown("Log");
    ui.log.line("later");
    ui.expectShown("Log (1)");
    for (int i = 0; i < 6000; ++i) // more than the log keeps
        ui.log.line("line " + std::to_string(i));
    ui.click("Log (6001)");
    ui.expectShown("line 5999");
}

} // namespace
} // namespace orvalen::test
