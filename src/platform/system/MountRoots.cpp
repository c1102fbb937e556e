#include "platform/system/MountRoots.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

namespace orvalen {

bool MountRoots::isMissing(const std::string& path) const {
    if (std::ranges::none_of(folders,
                             [&](const std::string& folder) { return path.starts_with(folder + "/"); }))
        return false;
    struct stat status {};
    return ::stat(path.c_str(), &status) != 0 && errno != EACCES;
}

} // namespace orvalen
