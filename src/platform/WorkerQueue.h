#pragma once

#include <functional>

namespace orvalen {

/// A background thread that runs its jobs one after another.
class WorkerQueue {
public:
    virtual ~WorkerQueue() = default;
    /// Returns at once. A job gets plain values, touches no state, and posts what it has to say to the main
    /// queue.
    virtual void post(std::function<void()> job) = 0;
};

} // namespace orvalen
