#pragma once

#include "platform/Timer.h"

#include <chrono>
#include <functional>

namespace orvalen {

/// Runs functions on the main thread.
class MainQueue {
public:
    using Function = std::function<void()>;

    virtual ~MainQueue() = default;
    /// Runs the function later on the main thread, after everything posted before. Thread-safe.
    virtual void post(Function function) = 0;
    /// Runs the function once after the delay. Cannot be cancelled. Main thread.
    virtual void after(std::chrono::milliseconds delay, Function function) = 0;
    /// Runs the function repeatedly until the handle is destroyed, also while a dialog is open. Main thread.
    virtual TimerHandle every(std::chrono::milliseconds interval, Function function) = 0;
};

} // namespace orvalen
