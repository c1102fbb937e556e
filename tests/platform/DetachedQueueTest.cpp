#include "platform/system/DetachedQueue.h"

#include <gtest/gtest.h>
#include <string>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
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
