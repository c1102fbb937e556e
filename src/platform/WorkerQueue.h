#pragma once

#include <functional>

namespace orvalen {

/// A background thread that runs jobs in order.
class WorkerQueue {
public:
    virtual ~WorkerQueue() = default;
    /// Adds a job and returns at once. A job owns its data, must not touch the state, and sends results with
    /// MainQueue::post().
    virtual void post(std::function<void()> job) = 0;
};

} // namespace orvalen
