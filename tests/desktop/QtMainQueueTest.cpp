#include "platform/desktop/QtMainQueue.h"

#include "desktop/EventLoop.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;

TEST(QtMainQueue, RunsPostsOfAnotherThreadInOrderAndNeverAtOnce) {
    QtMainQueue queue;
    int next = 0;
    const auto expectNext = [&](int number) { EXPECT_EQ(number, next++); };
    queue.post([&] { expectNext(0); });
    EXPECT_EQ(next, 0);
    std::thread([&] {
        for (int i = 1; i < 20'000; ++i)
            queue.post([&expectNext, i] { expectNext(i); });
    }).join();
    EXPECT_TRUE(turnUntil([&] { return next == 20'000; }));
}

TEST(QtMainQueue, LetsTheWindowBreatheUnderALongLineOfPosts) {
    QtMainQueue queue;
    int done = 0;
    for (int i = 0; i < 100; ++i)
        queue.post([&] {
            std::this_thread::sleep_for(2ms);
            ++done;
        });
    // Represents painting and input, which need the event loop every few milliseconds.
    int turns = 0;
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, [&] { turns += done < 100; });
    other.start(1);
    ASSERT_TRUE(turnUntil([&] { return done == 100; }, 30s));
    EXPECT_GE(turns, 5) << "within 200 ms of posts";
}

/// If a post opens a modal dialog, later posts run during the dialog, each once and in order.
TEST(QtMainQueue, GoesOnInsideADialogThatAPostOpens) {
    // The dialog is opened by the first event, or by a later one after a full slice of posts.
    for (const int postsBefore : {0, 20}) {
        QtMainQueue queue;
        int next = 0;
        bool closed = false;
        for (int i = 0; i < postsBefore; ++i)
            queue.post([] { std::this_thread::sleep_for(1ms); });
        queue.post([&] {
            QEventLoop dialog;
            for (int i = 0; i < 1000; ++i)
                queue.post([&, i] {
                    EXPECT_EQ(i, next++);
                    if (i == 500)
                        dialog.quit();
                });
            dialog.exec();
            closed = true;
        });
        ASSERT_TRUE(turnUntil([&] { return closed && next == 1000; })) << postsBefore;
    }
}

TEST(QtMainQueue, RunsALaterFunctionOnceAndARepeatedOneUntilItsHandleIsReleased) {
    QtMainQueue queue;
    QElapsedTimer clock;
    clock.start();
    std::vector<qint64> times;
    queue.after(40ms, [&] { times.push_back(clock.elapsed()); });
    int calls = 0;
    TimerHandle handle = queue.every(2ms, [&] { ++calls; });
    ASSERT_TRUE(turnUntil([&] { return calls >= 3 && !times.empty(); }));
    handle.reset();
    const int atEnd = calls;
    turnFor(60ms);
    EXPECT_EQ(calls, atEnd);
    EXPECT_EQ(times.size(), 1U);
    EXPECT_GE(times[0], 39);
}

TEST(QtMainQueue, LetsAHandleGoInsideItsOwnCall) {
    QtMainQueue queue;
    int calls = 0;
    TimerHandle handle;
    // The captured text lets the sanitizer detect a use after the function was destroyed.
    handle = queue.every(1ms, [&, text = std::string(100, 'x')] {
        handle.reset();
        turnFor(5ms);
        calls += text == std::string(100, 'x');
    });
    EXPECT_TRUE(turnUntil([&] { return calls > 0; }));
    turnFor(30ms);
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace orvalen::test
