#pragma once

#include "platform/MainQueue.h"

#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <mutex>

namespace orvalen::test {

/// A main queue with a hand-turned clock. Posts may come from any thread; everything runs where it is turned.
class FakeMainQueue : public MainQueue {
public:
    void post(Function function) override;
    void after(std::chrono::milliseconds delay, Function function) override;
    TimerHandle every(std::chrono::milliseconds interval, Function function) override;

    /// Runs everything posted, and what that posts.
    void run();
    /// Runs the one next post; false when there is none.
    bool runOne();
    /// Turns the clock, running timers and posts as they fall due.
    void advance(std::chrono::milliseconds time);
    std::size_t pending() const;
    /// How many repeating timers have a living handle.
    std::size_t repeatingTimers() const;

private:
    struct Scheduled {
        std::chrono::milliseconds due;
        std::chrono::milliseconds interval; ///< zero: once
        Function function;
        std::weak_ptr<Timer> handle;
    };

    mutable std::mutex mutex_;
    std::deque<Function> posts_;
    std::list<Scheduled> scheduled_;
    std::chrono::milliseconds now_{0};
};

} // namespace orvalen::test
