#pragma once

#include "platform/WorkerQueue.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace orvalen {

/// Runs the jobs on its own thread. The destructor waits for the running job and drops queued jobs.
class ThreadWorkerQueue : public WorkerQueue {
public:
    ThreadWorkerQueue();
    void post(std::function<void()> job) override;

private:
    void run(const std::stop_token& stop);

    std::mutex mutex_;
    std::condition_variable_any wakeUp_;
    std::deque<std::function<void()>> jobs_;
    std::jthread thread_; ///< last member, so that the thread ends before the other members are destroyed
};

} // namespace orvalen
