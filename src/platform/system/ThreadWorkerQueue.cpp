#include "platform/system/ThreadWorkerQueue.h"

#include <utility>

namespace orvalen {

ThreadWorkerQueue::ThreadWorkerQueue() : thread_([this](const std::stop_token& stop) { run(stop); }) {}

void ThreadWorkerQueue::post(std::function<void()> job) {
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    wakeUp_.notify_one();
}

void ThreadWorkerQueue::run(const std::stop_token& stop) {
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock(mutex_);
            wakeUp_.wait(lock, stop, [this] { return !jobs_.empty(); });
            if (stop.stop_requested())
                return;
            job = std::move(jobs_.front());
            jobs_.pop_front();
        }
        job();
    }
}

} // namespace orvalen
