#pragma once

#include <string>
#include <vector>

namespace orvalen {

/// The folders below which the system mounts removable and network drives.
struct MountRoots {
    std::vector<std::string> folders{"/media", "/run/media", "/mnt"};

    /// Whether the absolute path lies below one of the folders and does not exist now. False when the path
    /// cannot be looked up for lack of permission. Waits for a mounted drive that is slow. Any thread.
    bool isMissing(const std::string& path) const;
};

} // namespace orvalen
