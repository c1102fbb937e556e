#include "faults/MountedDisk.h"

#include "core/Files.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace orvalen::test {
namespace {

bool haveMounts = false;

/// As a user of its own namespace one may mount; the user stays who he is.
bool enterUserNamespace() {
    const auto user = std::to_string(::geteuid());
    const auto group = std::to_string(::getegid());
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeWholeFile("/proc/self/setgroups", "deny") &&
           writeWholeFile("/proc/self/uid_map", user + " " + user + " 1") &&
           writeWholeFile("/proc/self/gid_map", group + " " + group + " 1");
}

} // namespace

void takeMountsOfOurOwn() {
    haveMounts = (::unshare(CLONE_NEWNS) == 0 || enterUserNamespace()) &&
                 ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

bool canMount() {
    return haveMounts;
}

MountedDisk::MountedDisk() : temporaryBefore_(std::filesystem::temp_directory_path()) {
    EXPECT_EQ(::mount("none", place_.path().c_str(), "tmpfs", 0, "size=1m"), 0);
    ::setenv("TMPDIR", place_.path().c_str(), 1);
}

MountedDisk::~MountedDisk() {
    ::setenv("TMPDIR", temporaryBefore_.c_str(), 1);
    EXPECT_EQ(::umount(place_.path().c_str()), 0);
}

void MountedDisk::fillBut(std::size_t bytes) {
    const std::size_t free = std::filesystem::space(place_.path()).available;
    ASSERT_GT(free, bytes);
    place_.write("something else", std::string(free - bytes, 'x'));
}

void MountedDisk::makeRoom() {
    std::filesystem::remove(place_.path("something else"));
}

} // namespace orvalen::test
