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
#include <unistd.h>

// The functions below stand before those of the C library, for this program and for every library it loads.
// They call the kernel themselves, so that a sanitizer's own functions of these names do not matter.

namespace orvalen::test {
namespace {

constexpr std::array<const char*, 13> names{"open",     "status",      "read",       "reserve", "write",
                                            "truncate", "permissions", "sync",       "close",   "rename",
                                            "remove",   "make folder", "open folder"};

struct Watch {
    std::vector<std::string> places;
    std::optional<Fault> fault;
    std::array<int, names.size()> counts{};
};

std::mutex mutex;
Watch watch;
std::atomic<bool> isWatching = false;

/// What the call that is about to be made shall do.
struct Order {
    bool fails = false;
    bool half = false;
};

Order orderFor(Call call, std::string_view path) {
    const std::lock_guard lock(mutex);
    bool isWatched = false;
    for (const std::string& place : watch.places)
        isWatched = isWatched || path.starts_with(place);
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
    if (number > fault.number && fault.way == Fault::Way::halfThenEnd) {
        errno = fault.error;
        return {true, false};
    }
    return {};
}

Order order(Call call, const char* path) {
    return isWatching && path != nullptr ? orderFor(call, path) : Order{};
}

Order order(Call call, int file) {
    if (!isWatching)
        return {};
    const int before = errno;
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const long length = ::syscall(SYS_readlink, link.c_str(), path.data(), path.size());
    errno = before;
    return length > 0 ? orderFor(call, {path.data(), static_cast<std::size_t>(length)}) : Order{};
}

std::size_t share(const Order& order, std::size_t length) {
    return order.half ? (length + 1) / 2 : length;
}

} // namespace

const char* nameOf(Call call) {
    return names.at(static_cast<std::size_t>(call));
}

std::vector<Call> allCalls() {
    std::vector<Call> calls;
    for (std::size_t i = 0; i < names.size(); ++i)
        calls.push_back(static_cast<Call>(i));
    return calls;
}

FailingCalls::FailingCalls(std::vector<std::string> places, std::optional<Fault> fault) {
    watch = {std::move(places), fault, {}};
    isWatching = true;
}

FailingCalls::~FailingCalls() {
    isWatching = false;
}

int FailingCalls::count(Call call) const {
    const std::lock_guard lock(mutex);
    return watch.counts.at(static_cast<std::size_t>(call));
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
    if (order(Call::open, path).fails)
        return -1;
    return static_cast<int>(::syscall(SYS_openat, folder, path, flags, mode));
}

int openat64(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openat(folder, path, flags, mode);
}

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openat(AT_FDCWD, path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openat(AT_FDCWD, path, flags, mode);
}

int fstat(int file, struct stat* status) noexcept {
    return order(Call::status, file).fails ? -1 : static_cast<int>(::syscall(SYS_fstat, file, status));
}

int fstat64(int file, struct stat64* status) noexcept {
    return order(Call::status, file).fails ? -1 : static_cast<int>(::syscall(SYS_fstat, file, status));
}

ssize_t read(int file, void* bytes, size_t length) {
    const Order order = orvalen::test::order(Call::read, file);
    return order.fails ? -1 : ::syscall(SYS_read, file, bytes, share(order, length));
}

ssize_t pread(int file, void* bytes, size_t length, off_t offset) {
    const Order order = orvalen::test::order(Call::read, file);
    return order.fails ? -1 : ::syscall(SYS_pread64, file, bytes, share(order, length), offset);
}

ssize_t pread64(int file, void* bytes, size_t length, off64_t offset) {
    return pread(file, bytes, length, offset);
}

ssize_t write(int file, const void* bytes, size_t length) {
    const Order order = orvalen::test::order(Call::write, file);
    return order.fails ? -1 : ::syscall(SYS_write, file, bytes, share(order, length));
}

ssize_t pwrite(int file, const void* bytes, size_t length, off_t offset) {
    const Order order = orvalen::test::order(Call::write, file);
    return order.fails ? -1 : ::syscall(SYS_pwrite64, file, bytes, share(order, length), offset);
}

ssize_t pwrite64(int file, const void* bytes, size_t length, off64_t offset) {
    return pwrite(file, bytes, length, offset);
}

int fallocate(int file, int mode, off_t offset, off_t length) {
    return order(Call::reserve, file).fails
               ? -1
               : static_cast<int>(::syscall(SYS_fallocate, file, mode, offset, length));
}

int fallocate64(int file, int mode, off64_t offset, off64_t length) {
    return fallocate(file, mode, offset, length);
}

int ftruncate(int file, off_t length) noexcept {
    return order(Call::truncate, file).fails ? -1 : static_cast<int>(::syscall(SYS_ftruncate, file, length));
}

int ftruncate64(int file, off64_t length) noexcept {
    return ftruncate(file, length);
}

int fchmod(int file, mode_t mode) noexcept {
    return order(Call::permissions, file).fails ? -1 : static_cast<int>(::syscall(SYS_fchmod, file, mode));
}

int fsync(int file) {
    return order(Call::sync, file).fails ? -1 : static_cast<int>(::syscall(SYS_fsync, file));
}

int fdatasync(int file) {
    return order(Call::sync, file).fails ? -1 : static_cast<int>(::syscall(SYS_fdatasync, file));
}

int close(int file) {
    // As the kernel does it: the file is closed all the same.
    const bool fails = order(Call::close, file).fails;
    const int error = errno;
    const int result = static_cast<int>(::syscall(SYS_close, file));
    if (!fails)
        return result;
    errno = error;
    return -1;
}

int rename(const char* from, const char* to) noexcept {
    return order(Call::rename, to).fails ? -1 : static_cast<int>(::syscall(SYS_rename, from, to));
}

int unlink(const char* path) noexcept {
    return order(Call::remove, path).fails ? -1 : static_cast<int>(::syscall(SYS_unlink, path));
}

int mkdir(const char* path, mode_t mode) noexcept {
    return order(Call::makeFolder, path).fails ? -1 : static_cast<int>(::syscall(SYS_mkdir, path, mode));
}

DIR* opendir(const char* path) {
    static const auto next = reinterpret_cast<DIR* (*)(const char*)>(::dlsym(RTLD_NEXT, "opendir"));
    return order(Call::openFolder, path).fails ? nullptr : next(path);
}

} // extern "C"
