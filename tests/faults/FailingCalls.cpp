#include "faults/FailingCalls.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <mutex>
#include <ostream>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>

// The functions below replace those of the C library in this program and in all its libraries. They call the
// kernel directly, so that the sanitizer's replacements of these functions do not interfere.

namespace orvalen::test {
namespace {

struct Watch {
    std::vector<std::string> pathBeginnings;
    Fault fault;
    std::vector<std::string_view> calls;
};

std::mutex mutex;
Watch watch;
std::atomic<bool> isWatching = false;

/// The effect of the fault on the next call.
struct Effect {
    bool fails = false;
    bool half = false;
};

Effect effectOnPath(const char* call, std::string_view path) {
    const std::lock_guard lock(mutex);
    if (std::ranges::none_of(watch.pathBeginnings,
                             [&](const std::string& beginning) { return path.starts_with(beginning); }))
        return {};
    const std::size_t number = watch.calls.size();
    watch.calls.emplace_back(call);
    const Fault& fault = watch.fault;
    const bool isFollowing = fault.error != 0 && number > fault.number && watch.calls.back() == "write";
    const bool fails = fault.half ? isFollowing : number == fault.number;
    if (fails)
        errno = fault.error;
    return {fails, fault.half && number == fault.number};
}

Effect effectOf(const char* call, const char* path) {
    return isWatching && path != nullptr ? effectOnPath(call, path) : Effect{};
}

Effect effectOf(const char* call, int file) {
    if (!isWatching)
        return {};
    const int before = errno;
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const long length = ::syscall(SYS_readlink, link.c_str(), path.data(), path.size());
    errno = before;
    return length > 0 ? effectOnPath(call, {path.data(), static_cast<std::size_t>(length)}) : Effect{};
}

/// Makes the system call on this file or path, unless it must fail.
template <typename File, typename... Arguments>
int callOrFail(const char* call, File file, Arguments... arguments) {
    return effectOf(call, file).fails ? -1 : static_cast<int>(::syscall(arguments...));
}

/// Makes a system call that reads or writes `length` bytes, unless it must fail.
template <typename Bytes, typename... Offset>
ssize_t transferOrFail(const char* call, long number, int file, Bytes bytes, std::size_t length,
                       Offset... offset) {
    const Effect effect = effectOf(call, file);
    return effect.fails ? -1
                        : ::syscall(number, file, bytes, effect.half ? (length + 1) / 2 : length, offset...);
}

} // namespace

std::vector<Fault> faultsOf(const std::vector<std::string_view>& calls) {
    EXPECT_GE(calls.size(), 3U) << "the calls were not seen";
    std::vector<Fault> faults;
    for (std::size_t number = 0; number < calls.size(); ++number) {
        const std::string_view call = calls[number];
        for (const int error : {EIO, ENOSPC, EACCES})
            faults.push_back({number, call, error});
        if (call == "read" || call == "write") {
            faults.push_back({number, call, EINTR});
            faults.push_back({number, call, 0, true});
        }
        if (call == "write")
            faults.push_back({number, call, ENOSPC, true});
    }
    return faults;
}

std::ostream& operator<<(std::ostream& stream, const Fault& fault) {
    return stream << "call " << fault.number << ", " << fault.call << (fault.half ? ", half" : "") << ": "
                  << std::generic_category().message(fault.error);
}

FailingCalls::FailingCalls(std::vector<std::string> pathBeginnings, const Fault& fault) {
    watch = {std::move(pathBeginnings), fault, {}};
    isWatching = true;
}

FailingCalls::~FailingCalls() {
    isWatching = false;
}

std::vector<std::string_view> FailingCalls::calls() const {
    const std::lock_guard lock(mutex);
    return watch.calls;
}

} // namespace orvalen::test

using namespace orvalen::test;

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return callOrFail("open", path, SYS_openat, AT_FDCWD, path, flags, mode);
}

int fstat(int file, struct stat* status) noexcept {
    return callOrFail("status", file, SYS_fstat, file, status);
}

ssize_t read(int file, void* bytes, size_t length) {
    return transferOrFail("read", SYS_read, file, bytes, length);
}

ssize_t pread(int file, void* bytes, size_t length, off_t offset) {
    return transferOrFail("read", SYS_pread64, file, bytes, length, offset);
}

ssize_t write(int file, const void* bytes, size_t length) {
    return transferOrFail("write", SYS_write, file, bytes, length);
}

ssize_t pwrite(int file, const void* bytes, size_t length, off_t offset) {
    return transferOrFail("write", SYS_pwrite64, file, bytes, length, offset);
}

int fallocate(int file, int mode, off_t offset, off_t length) {
    return callOrFail("reserve", file, SYS_fallocate, file, mode, offset, length);
}

int ftruncate(int file, off_t length) noexcept {
    return callOrFail("truncate", file, SYS_ftruncate, file, length);
}

int fchmod(int file, mode_t mode) noexcept {
    return callOrFail("permissions", file, SYS_fchmod, file, mode);
}

int fsync(int file) {
    return callOrFail("sync", file, SYS_fsync, file);
}

int fdatasync(int file) {
    return callOrFail("sync", file, SYS_fdatasync, file);
}

int close(int file) {
    // Like the kernel, closes the descriptor even if it returns an error.
    const bool fails = effectOf("close", file).fails;
    const int error = errno;
    const int result = static_cast<int>(::syscall(SYS_close, file));
    if (!fails)
        return result;
    errno = error;
    return -1;
}

int rename(const char* from, const char* to) noexcept {
    return callOrFail("rename", to, SYS_rename, from, to);
}

int unlink(const char* path) noexcept {
    return callOrFail("remove", path, SYS_unlink, path);
}

// On this system, the functions for large files are the same.
int open64(const char* path, int flags, ...) __attribute__((alias("open")));
int fstat64(int file, struct stat64* status) noexcept __attribute__((alias("fstat")));
ssize_t pread64(int file, void* bytes, size_t length, off64_t offset) __attribute__((alias("pread")));
ssize_t pwrite64(int file, const void* bytes, size_t length, off64_t offset) __attribute__((alias("pwrite")));
int fallocate64(int file, int mode, off64_t offset, off64_t length) __attribute__((alias("fallocate")));
int ftruncate64(int file, off64_t length) noexcept __attribute__((alias("ftruncate")));

} // extern "C"
