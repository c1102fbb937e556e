#pragma once

#include <ctime>

namespace orvalen::bench {

/// Returns the processor time of this thread, which does not depend on other processes.
inline double processorMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace orvalen::bench
