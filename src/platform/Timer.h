#pragma once

#include <memory>

namespace orvalen {

/// A pending or repeating call. Destroying the last handle cancels it. Main thread.
class Timer {
public:
    virtual ~Timer() = default;
};

using TimerHandle = std::shared_ptr<Timer>;

} // namespace orvalen
