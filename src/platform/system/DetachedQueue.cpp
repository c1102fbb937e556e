#include "platform/system/DetachedQueue.h"

#include <thread>

namespace orvalen {

struct DetachedQueue::Jobs {
    std::mutex mutex;
    std::condition_variable news;
    std::deque<std::function<void()>> waiting; // under mutex
    bool isEnding = false;                     // under mutex
};

DetachedQueue::DetachedQueue() : jobs_(std::make_shared<Jobs>()) {
    std::thread([jobs = jobs_] { run(*jobs); }).detach();
}

DetachedQueue::~DetachedQueue() {
    const std::lock_guard lock(jobs_->mutex);
    jobs_->isEnding = true;
    jobs_->news.notify_one();
}

void DetachedQueue::post(std::function<void()> job) {
    const std::lock_guard lock(jobs_->mutex);
    jobs_->waiting.push_back(std::move(job));
    jobs_->news.notify_one();
}

void DetachedQueue::markOverdue() {
    const auto done = std::make_shared<std::promise<void>>();
    overdue_ = done->get_future();
    post([done] { done->set_value(); });
}

void DetachedQueue::run(Jobs& jobs) {
    std::unique_lock lock(jobs.mutex);
    for (;;) {
        jobs.news.wait(lock, [&jobs] { return !jobs.waiting.empty() || jobs.isEnding; });
        if (jobs.waiting.empty())
            return;
        auto job = std::move(jobs.waiting.front());
        jobs.waiting.pop_front();
        lock.unlock();
        job();
        job = nullptr; // destroys what the job owns, which may also block
        lock.lock();
    }
}

} // namespace orvalen
