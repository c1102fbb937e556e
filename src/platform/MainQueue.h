#pragma once

#include "platform/Timer.h"

#include <chrono>
#include <functional>

namespace orvalen {

/// The one road to the main thread.
class MainQueue {
public:
    using Function = std::function<void()>;

    virtual ~MainQueue() = default;
    /// Runs the function on the main thread, after everything posted before. Any thread; never runs it at
    /// once.
    virtual void post(Function function) = 0;
    /// Runs the function once, so much later. Cannot be called off. Main thread.
    virtual void after(std::chrono::milliseconds delay, Function function) = 0;
    /// Runs the function again and again until the handle is let go; also while a dialog is open. Main
    /// thread.
    virtual TimerHandle every(std::chrono::milliseconds interval, Function function) = 0;
};

} // namespace orvalen
