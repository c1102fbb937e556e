#include "platform/system/ThreadWorkerQueue.h"

#include "platform/system/DetachedQueue.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;

TEST(ThreadWorkerQueue, RunsJobsOneAfterAnotherInOrderOnOneOtherThread) {
    std::vector<int> order;
    std::set<std::thread::id> threads{std::this_thread::get_id()};
    std::promise<void> done;
    ThreadWorkerQueue queue;
    for (int i = 0; i < 500; ++i)
        queue.post([&, i] {
            order.push_back(i);
            threads.insert(std::this_thread::get_id());
        });
    queue.post([&] { done.set_value(); });
    done.get_future().wait();
    EXPECT_EQ(order.size(), 500U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
    EXPECT_EQ(threads.size(), 2U);
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
            std::this_thread::sleep_for(300ms); // longer than a busy system delays the destructor
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

using Clock = std::chrono::steady_clock;

TEST(DetachedQueue, AnswersInOrderAndGoesOnAfterACallThatWasOverdue) {
    std::promise<void> awake;
    auto order = std::make_shared<std::string>();
    DetachedQueue queue;
    queue.post([order] { *order += "a"; });
    EXPECT_EQ(queue.ask(5s, [order] { return *order += "b"; }), "ab");

    EXPECT_EQ(queue.ask(20ms,
                        [order, hung = awake.get_future().share()] {
                            hung.wait();
                            return *order += "c";
                        }),
              std::nullopt);
    const auto start = Clock::now();
    EXPECT_EQ(queue.ask(5s, [order] { return *order += "d"; }), std::nullopt);
    EXPECT_LT(Clock::now() - start, 1s) << "the earlier call is still overdue";

    awake.set_value();
    std::optional<std::string> answer;
    for (const auto limit = Clock::now() + 5s; !answer && Clock::now() < limit;)
        answer = queue.ask(5s, [order] { return *order; });
    EXPECT_EQ(answer, "abcd");
}

TEST(DetachedQueue, EndsWithoutWaitingAndRunsWhatIsQueued) {
    std::promise<void> awake;
    const auto ran = std::make_shared<std::promise<void>>();
    const auto end = ran->get_future();
    {
        DetachedQueue queue;
        queue.post([hung = awake.get_future().share()] { hung.wait(); });
        queue.post([ran] { ran->set_value(); });
    }
    EXPECT_EQ(end.wait_for(0s), std::future_status::timeout);
    awake.set_value();
    EXPECT_EQ(end.wait_for(5s), std::future_status::ready);
}

} // namespace
} // namespace orvalen::test
