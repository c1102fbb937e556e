#pragma once

#include <chrono>
#include <string>

namespace orvalen::bench {

struct DriveKind {
    std::chrono::microseconds request; ///< duration of one request
    bool isParallel;                   ///< requests are served at the same time, not one after another
    bool isCached;                     ///< the system caches what was read
};

/// While this object exists, this process reads files below the folder as if from such a drive, with an empty
/// cache. A request opens a file or reads 16 kB.
class SlowDrive {
public:
    SlowDrive(std::string folder, const DriveKind& kind);
    ~SlowDrive();
    SlowDrive(const SlowDrive&) = delete;
    SlowDrive& operator=(const SlowDrive&) = delete;
};

} // namespace orvalen::bench
