#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <sys/uio.h>
#include <unistd.h>
#include <vector>

namespace orvalen::bench {

inline bool isHeadCached(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    char byte = 0;
    const iovec buffer{&byte, 1};
    const bool result = ::preadv2(file, &buffer, 1, 0, RWF_NOWAIT) == 1;
    ::close(file);
    return result;
}

/// Removes the files from the page cache. Returns false if the last file is still cached. If the environment
/// has ORVALEN_DROP_CACHES, also empties the kernel's caches of directories and inodes, which needs root.
inline bool tryToDrop(const std::vector<std::string>& files) {
    for (const std::string& path : files) {
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
        ::close(file);
    }
    if (std::getenv("ORVALEN_DROP_CACHES") != nullptr &&
        !(std::ofstream("/proc/sys/vm/drop_caches") << "3\n"))
        return false;
    return !isHeadCached(files.back());
}

/// Calls tryToDrop() again if a page was in use.
inline bool dropFromCache(const std::vector<std::string>& files) {
    return tryToDrop(files) || tryToDrop(files) || tryToDrop(files);
}

} // namespace orvalen::bench
