#pragma once

#include "core/Files.h"
#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>

namespace orvalen::test {

/// Lets this process mount file systems that no other process sees. Returns whether the system allows it. The
/// first call must come at the start, with one thread.
inline bool canMount() {
    // In a user namespace of its own, the process may mount. User and group stay the same.
    const auto enterUserNamespace = [user = std::to_string(::geteuid()),
                                     group = std::to_string(::getegid())] {
        return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 &&
               writeWholeFile("/proc/self/setgroups", "deny") &&
               writeWholeFile("/proc/self/uid_map", user + " " + user + " 1") &&
               writeWholeFile("/proc/self/gid_map", group + " " + group + " 1");
    };
    static const bool can = (::unshare(CLONE_NEWNS) == 0 || enterUserNamespace()) &&
                            ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return can;
}

/// A disk of 1 MB in memory. While this object exists, temporary folders are created on it.
class MountedDisk {
public:
    MountedDisk() : temporaryBefore_(std::filesystem::temp_directory_path()) {
        EXPECT_EQ(::mount("none", place_.path().c_str(), "tmpfs", 0, "size=1m"), 0);
        ::setenv("TMPDIR", place_.path().c_str(), 1);
    }
    ~MountedDisk() {
        ::setenv("TMPDIR", temporaryBefore_.c_str(), 1);
        EXPECT_EQ(::umount(place_.path().c_str()), 0);
    }
    MountedDisk(const MountedDisk&) = delete;
    MountedDisk& operator=(const MountedDisk&) = delete;

    /// Fills the disk except for `bytes`.
    void fillBut(std::size_t bytes) {
        const std::size_t free = std::filesystem::space(place_.path()).available;
        ASSERT_GT(free, bytes);
        place_.write("something else", std::string(free - bytes, 'x'));
    }
    void makeRoom() { std::filesystem::remove(place_.path("something else")); }

private:
    TemporaryFolder place_;
    std::string temporaryBefore_;
};

} // namespace orvalen::test
