#include "faults/FailingCalls.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <string_view>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>

// The functions below replace those of the C library in this program and in all its libraries. They call the
// kernel directly, so that the sanitizer's replacements of these functions do not interfere.

namespace orvalen::test {
namespace {

constexpr std::array<const char*, 12> names{"open",  "status",   "read",        "reserve",
                                            "write", "truncate", "permissions", "sync",
                                            "close", "rename",   "remove",      "open folder"};

struct Watch {
    std::vector<std::string> pathBeginnings;
    std::optional<Fault> fault;
    std::array<int, names.size()> counts{};
};

std::mutex mutex;
Watch watch;
std::atomic<bool> isWatching = false;

/// The effect of the fault on the next call.
struct Effect {
    bool fails = false;
    bool half = false;
};

Effect effectOnPath(Call call, std::string_view path) {
    const std::lock_guard lock(mutex);
    bool isWatched = false;
    for (const std::string& beginning : watch.pathBeginnings)
        isWatched = isWatched || path.starts_with(beginning);
    if (!isWatched)
        return {};
    const int number = watch.counts.at(static_cast<std::size_t>(call))++;
    if (!watch.fault || watch.fault->call != call)
        return {};
    const Fault& fault = *watch.fault;
    if (number == fault.number) {
        errno = fault.error;
        return {fault.way == Fault::Way::error, fault.way != Fault::Way::error};
    }
    if (number > fault.number && fault.way == Fault::Way::halfThenFail) {
        errno = fault.error;
        return {true, false};
    }
    return {};
}

Effect effectOf(Call call, const char* path) {
    return isWatching && path != nullptr ? effectOnPath(call, path) : Effect{};
}

Effect effectOf(Call call, int file) {
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
int callOrFail(Call call, File file, Arguments... arguments) {
    return effectOf(call, file).fails ? -1 : static_cast<int>(::syscall(arguments...));
}

/// Makes a system call that reads or writes `length` bytes, unless it must fail.
template <typename Bytes, typename... Offset>
ssize_t transferOrFail(Call call, long number, int file, Bytes bytes, std::size_t length, Offset... offset) {
    const Effect effect = effectOf(call, file);
    return effect.fails ? -1
                        : ::syscall(number, file, bytes, effect.half ? (length + 1) / 2 : length, offset...);
}

} // namespace

std::vector<Call> allCalls() {
    std::vector<Call> calls;
    for (std::size_t i = 0; i < names.size(); ++i)
        calls.push_back(static_cast<Call>(i));
    return calls;
}

std::string describe(const Fault& fault) {
    const std::string half = fault.way == Fault::Way::error ? "" : "half, then ";
    return std::string(names.at(static_cast<std::size_t>(fault.call))) + ' ' + std::to_string(fault.number) +
           ": " + half + (fault.error == 0 ? "the rest" : std::generic_category().message(fault.error));
}

std::vector<Fault> faultsOf(const std::vector<int>& counts, const std::vector<int>& errors) {
    std::vector<Fault> faults;
    for (const Call call : allCalls())
        for (int number = 0; number < counts.at(static_cast<std::size_t>(call)); ++number) {
            for (const int error : errors)
                faults.push_back({call, number, Fault::Way::error, error});
            if (call == Call::read || call == Call::write)
                faults.push_back({call, number, Fault::Way::halfThenContinue, 0});
            if (call == Call::write)
                faults.push_back({call, number, Fault::Way::halfThenFail, ENOSPC});
        }
    return faults;
}

FailingCalls::FailingCalls(std::vector<std::string> pathBeginnings, std::optional<Fault> fault) {
    watch = {std::move(pathBeginnings), fault, {}};
    isWatching = true;
}

FailingCalls::~FailingCalls() {
    isWatching = false;
}

std::vector<int> FailingCalls::counts() const {
    const std::lock_guard lock(mutex);
    return {watch.counts.begin(), watch.counts.end()};
}

} // namespace orvalen::test

using namespace orvalen::test;

extern "C" {

int openat(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode =
        (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return callOrFail(Call::open, path, SYS_openat, folder, path, flags, mode);
}

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openat(AT_FDCWD, path, flags, mode);
}

int fstat(int file, struct stat* status) noexcept {
    return callOrFail(Call::status, file, SYS_fstat, file, status);
}

ssize_t read(int file, void* bytes, size_t length) {
    return transferOrFail(Call::read, SYS_read, file, bytes, length);
}

ssize_t pread(int file, void* bytes, size_t length, off_t offset) {
    return transferOrFail(Call::read, SYS_pread64, file, bytes, length, offset);
}

ssize_t write(int file, const void* bytes, size_t length) {
    return transferOrFail(Call::write, SYS_write, file, bytes, length);
}

ssize_t pwrite(int file, const void* bytes, size_t length, off_t offset) {
    return transferOrFail(Call::write, SYS_pwrite64, file, bytes, length, offset);
}

int fallocate(int file, int mode, off_t offset, off_t length) {
    return callOrFail(Call::reserve, file, SYS_fallocate, file, mode, offset, length);
}

int ftruncate(int file, off_t length) noexcept {
    return callOrFail(Call::truncate, file, SYS_ftruncate, file, length);
}

int fchmod(int file, mode_t mode) noexcept {
    return callOrFail(Call::permissions, file, SYS_fchmod, file, mode);
}

int fsync(int file) {
    return callOrFail(Call::sync, file, SYS_fsync, file);
}

int fdatasync(int file) {
    return callOrFail(Call::sync, file, SYS_fdatasync, file);
}

int close(int file) {
    // Like the kernel, closes the descriptor even if it returns an error.
    const bool fails = effectOf(Call::close, file).fails;
    const int error = errno;
    const int result = static_cast<int>(::syscall(SYS_close, file));
    if (!fails)
        return result;
    errno = error;
    return -1;
}

int rename(const char* from, const char* to) noexcept {
    return callOrFail(Call::rename, to, SYS_rename, from, to);
}

int unlink(const char* path) noexcept {
    return callOrFail(Call::remove, path, SYS_unlink, path);
}

DIR* opendir(const char* path) {
    static const auto next = reinterpret_cast<DIR* (*)(const char*)>(::dlsym(RTLD_NEXT, "opendir"));
    return effectOf(Call::openFolder, path).fails ? nullptr : next(path);
}

// On this system, the functions for large files are the same.
int open64(const char* path, int flags, ...) __attribute__((alias("open")));
int openat64(int folder, const char* path, int flags, ...) __attribute__((alias("openat")));
int fstat64(int file, struct stat64* status) noexcept __attribute__((alias("fstat")));
ssize_t pread64(int file, void* bytes, size_t length, off64_t offset) __attribute__((alias("pread")));
ssize_t pwrite64(int file, const void* bytes, size_t length, off64_t offset) __attribute__((alias("pwrite")));
int fallocate64(int file, int mode, off64_t offset, off64_t length) __attribute__((alias("fallocate")));
int ftruncate64(int file, off64_t length) noexcept __attribute__((alias("ftruncate")));

} // extern "C"
