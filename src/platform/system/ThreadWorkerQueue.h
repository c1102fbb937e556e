#pragma once

#include "platform/WorkerQueue.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace orvalen {

/// One thread, first in, first out. Destruction waits for the job that runs and drops those that wait.
class ThreadWorkerQueue : public WorkerQueue {
public:
    ThreadWorkerQueue();
    void post(std::function<void()> job) override;

private:
    void run(const std::stop_token& stop);

    std::mutex mutex_;
    std::condition_variable_any wakeUp_;
    std::deque<std::function<void()>> jobs_;
    std::jthread thread_; ///< last, so that it ends before what it uses
};

} // namespace orvalen
