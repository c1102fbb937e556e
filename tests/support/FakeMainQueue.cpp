#include "support/FakeMainQueue.h"

#include <algorithm>

namespace orvalen::test {

void FakeMainQueue::post(Function function) {
    const std::lock_guard lock(mutex_);
    posts_.push_back(std::move(function));
}

void FakeMainQueue::after(std::chrono::milliseconds delay, Function function) {
    scheduled_.push_back({now_ + delay, std::chrono::milliseconds(0), std::move(function), {}});
}

TimerHandle FakeMainQueue::every(std::chrono::milliseconds interval, Function function) {
    auto handle = std::make_shared<Timer>();
    scheduled_.push_back({now_ + interval, interval, std::move(function), handle});
    return handle;
}

bool FakeMainQueue::runOne() {
    Function next;
    {
        const std::lock_guard lock(mutex_);
        if (posts_.empty())
            return false;
        next = std::move(posts_.front());
        posts_.pop_front();
    }
    next();
    return true;
}

void FakeMainQueue::run() {
    while (runOne()) {
    }
}

void FakeMainQueue::advance(std::chrono::milliseconds time) {
    const auto end = now_ + time;
    run();
    for (;;) {
        scheduled_.remove_if(
            [](const Scheduled& timer) { return timer.interval.count() > 0 && timer.handle.expired(); });
        const auto next = std::min_element(scheduled_.begin(), scheduled_.end(),
                                           [](const auto& a, const auto& b) { return a.due < b.due; });
        if (next == scheduled_.end() || next->due > end)
            break;
        now_ = next->due;
        const Function function = next->function;
        if (next->interval.count() > 0)
            next->due += next->interval;
        else
            scheduled_.erase(next);
        function();
        run();
    }
    now_ = end;
}

std::size_t FakeMainQueue::pending() const {
    const std::lock_guard lock(mutex_);
    return posts_.size();
}

std::size_t FakeMainQueue::repeatingTimers() const {
    return static_cast<std::size_t>(
        std::count_if(scheduled_.begin(), scheduled_.end(), [](const Scheduled& timer) {
            return timer.interval.count() > 0 && !timer.handle.expired();
        }));
}

} // namespace orvalen::test
