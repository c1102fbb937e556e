#include "platform/system/ThreadWorkerQueue.h"

#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <numeric>
#include <vector>

namespace orvalen::test {
namespace {

TEST(ThreadWorkerQueue, RunsJobsOneAfterAnotherInOrderOnOneOtherThread) {
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    std::promise<void> done;
    ThreadWorkerQueue queue;
    for (int i = 0; i < 500; ++i)
        queue.post([&, i] {
            order.push_back(i);
            threads.push_back(std::this_thread::get_id());
        });
    queue.post([&] { done.set_value(); });
    done.get_future().wait();

    std::vector<int> expected(500);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(order, expected);
    EXPECT_NE(threads.front(), std::this_thread::get_id());
    EXPECT_TRUE(std::equal(threads.begin() + 1, threads.end(), threads.begin()));
}

TEST(ThreadWorkerQueue, DestructionFinishesTheRunningJobAndDropsTheOthers) {
    std::atomic<bool> finished = false;
    std::atomic<bool> ranDropped = false;
    const auto held = std::make_shared<int>();
    {
        std::promise<void> started;
        ThreadWorkerQueue queue;
        queue.post([&] {
            started.set_value();
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            finished = true;
        });
        for (int i = 0; i < 10; ++i)
            queue.post([&ranDropped, held] { ranDropped = true; });
        started.get_future().wait();
    }
    EXPECT_TRUE(finished);
    EXPECT_FALSE(ranDropped);
    EXPECT_EQ(held.use_count(), 1) << "a dropped job lives on";
}

} // namespace
} // namespace orvalen::test
