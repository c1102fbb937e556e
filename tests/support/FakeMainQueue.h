#pragma once

#include "platform/MainQueue.h"

#include <algorithm>
#include <deque>
#include <list>
#include <memory>
#include <mutex>

namespace orvalen::test {

/// A main queue with a clock that the test moves. post() is thread-safe; functions run on the thread that
/// calls run() or advance().
class FakeMainQueue : public MainQueue {
public:
    void post(Function function) override {
        const std::lock_guard lock(mutex_);
        posts_.push_back(std::move(function));
    }
    void after(std::chrono::milliseconds delay, Function function) override {
        scheduled_.push_back({now_ + delay, std::chrono::milliseconds(0), std::move(function), {}});
    }
    TimerHandle every(std::chrono::milliseconds interval, Function function) override {
        auto handle = std::make_shared<Timer>();
        scheduled_.push_back({now_ + interval, interval, std::move(function), handle});
        return handle;
    }

    /// Runs all posts, including posts by posts.
    void run() {
        while (runOne()) {
        }
    }
    /// Runs the next post. Returns false if no post is waiting.
    bool runOne() {
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
    /// Moves the clock and runs due timers and posts.
    void advance(std::chrono::milliseconds time) {
        const auto end = now_ + time;
        run();
        for (;;) {
            scheduled_.remove_if([](const Scheduled& timer) { return timer.repeats() && !timer.isHeld(); });
            const auto next = std::ranges::min_element(scheduled_, {}, &Scheduled::due);
            if (next == scheduled_.end() || next->due > end)
                break;
            now_ = next->due;
            const Function function = next->function;
            if (next->repeats())
                next->due += next->interval;
            else
                scheduled_.erase(next);
            function();
            run();
        }
        now_ = end;
    }
    std::size_t pending() const {
        const std::lock_guard lock(mutex_);
        return posts_.size();
    }
    /// Returns the number of repeating timers whose handle exists.
    std::size_t repeatingTimers() const {
        return static_cast<std::size_t>(std::ranges::count_if(
            scheduled_, [](const Scheduled& timer) { return timer.repeats() && timer.isHeld(); }));
    }

private:
    struct Scheduled {
        std::chrono::milliseconds due;
        std::chrono::milliseconds interval; ///< 0: once
        Function function;
        std::weak_ptr<Timer> handle;

        bool repeats() const { return interval.count() > 0; }
        bool isHeld() const { return !handle.expired(); }
    };

    mutable std::mutex mutex_;
    std::deque<Function> posts_;
    std::list<Scheduled> scheduled_;
    std::chrono::milliseconds now_{0};
};

} // namespace orvalen::test
