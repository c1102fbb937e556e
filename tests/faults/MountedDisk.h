#pragma once

#include "support/TemporaryFolder.h"

#include <cstddef>
#include <string>

namespace orvalen::test {

/// Lets this process mount what no other sees. To be called at the start, as one thread; not every system
/// allows it.
void takeMountsOfOurOwn();
bool canMount();

/// A disk of one megabyte, in memory. While it stands, temporary folders are made on it.
class MountedDisk {
public:
    MountedDisk();
    ~MountedDisk();
    MountedDisk(const MountedDisk&) = delete;
    MountedDisk& operator=(const MountedDisk&) = delete;

    /// Fills it with something else.
    void fillBut(std::size_t bytes);
    void makeRoom();

private:
    TemporaryFolder place_;
    std::string temporaryBefore_;
};

} // namespace orvalen::test
