#pragma once

#include <chrono>
#include <string>

namespace orvalen::bench {

struct DriveKind {
    std::chrono::microseconds request; ///< time of one request
    bool isParallel;                   ///< requests are served at the same time, not one after another
    bool isCached;                     ///< the system keeps what was read
};

/// While it exists, files below the folder are opened and read by this process as from such a drive with an
/// empty cache. A request is one opening, or one block of 16 kB.
class SlowDrive {
public:
    SlowDrive(std::string folder, const DriveKind& kind);
    ~SlowDrive();
    SlowDrive(const SlowDrive&) = delete;
    SlowDrive& operator=(const SlowDrive&) = delete;
};

} // namespace orvalen::bench
