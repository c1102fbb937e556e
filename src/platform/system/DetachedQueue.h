#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>

namespace orvalen {

/// A thread that runs jobs in order, for calls that a drive may block for ever. The destructor returns at
/// once; the thread runs the remaining jobs and ends by itself. Jobs must therefore own their data. Use from
/// one thread.
class DetachedQueue {
public:
    DetachedQueue();
    ~DetachedQueue();
    DetachedQueue(const DetachedQueue&) = delete;
    DetachedQueue& operator=(const DetachedQueue&) = delete;

    void post(std::function<void()> job);

    /// Runs the call after all earlier jobs. Returns its result, or nullopt if it has not ended after
    /// `limit`. Does not wait while an earlier call is overdue, but returns nullopt at once. The call still
    /// runs later.
    template <typename Call>
    std::optional<std::invoke_result_t<Call>> ask(std::chrono::milliseconds limit, Call call) {
        using Result = std::invoke_result_t<Call>;
        const auto answer = std::make_shared<std::promise<Result>>();
        auto arrival = answer->get_future();
        post([answer, call = std::move(call)]() mutable { answer->set_value(call()); });
        if (overdue_ && overdue_->wait_for(std::chrono::seconds(0)) != std::future_status::ready)
            return std::nullopt;
        overdue_.reset();
        if (arrival.wait_for(limit) == std::future_status::ready)
            return arrival.get();
        markOverdue();
        return std::nullopt;
    }

private:
    struct Jobs;
    static void run(Jobs& jobs);
    void markOverdue();

    std::shared_ptr<Jobs> jobs_;
    std::optional<std::future<void>> overdue_; ///< ready when all overdue jobs have run
};

} // namespace orvalen
