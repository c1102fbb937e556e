#pragma once

#include <string>
#include <vector>

namespace orvalen {

/// The folders below which the system mounts removable and network drives.
struct MountRoots {
    std::vector<std::string> folders{"/media", "/run/media", "/mnt"};

    /// Returns whether the absolute path is below one of the folders and does not exist now. Returns false if
    /// this process may not search a folder of the path. Blocks while the drive does not answer. Thread-safe.
    bool isMissing(const std::string& path) const;
};

} // namespace orvalen
