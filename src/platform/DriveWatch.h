#pragma once

#include "core/Location.h"

#include <functional>
#include <vector>

namespace orvalen {

/// Reports which locations are on a drive that is not connected. Main thread.
class DriveWatch {
public:
    using Observer = std::function<void(std::vector<Location> notConnected)>;

    virtual ~DriveWatch() = default;
    /// Replaces the watched locations and the observer. Returns at once and never waits for a drive. Calls
    /// the observer on the main thread: soon after this call, and whenever the list changes because a drive
    /// was connected or disconnected.
    virtual void watch(std::vector<Location> locations, Observer observer) = 0;
};

} // namespace orvalen
