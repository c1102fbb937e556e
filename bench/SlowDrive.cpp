#include "SlowDrive.h"

#include <atomic>
#include <condition_variable>
#include <cstdarg>
#include <fcntl.h>
#include <mutex>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <utility>

// The functions at the end replace those of the C library in this program.

namespace orvalen::bench {
namespace {

using Block = std::pair<ino_t, off_t>; ///< offset -1: the inode itself
constexpr off_t blockLength = 16 << 10;

struct Drive {
    std::string folder;
    DriveKind kind{};
    std::mutex state;
    std::set<ino_t> files;
    std::set<Block> asked;
    std::set<Block> cached;
    int run = 0; ///< a thread that still reads for an earlier run waits no longer
    std::condition_variable arrival;
    std::mutex head; ///< locked during a request if the drive serves only one request at a time
};

Drive drive;
std::atomic<bool> isSlow = false;

void serve() {
    const auto lock = drive.kind.isParallel ? std::unique_lock<std::mutex>() : std::unique_lock(drive.head);
    std::this_thread::sleep_for(drive.kind.request);
}

/// Waits as long as the drive needs. On a cached drive, a thread that needs a block that another thread is
/// reading waits for that thread, as in the kernel.
void request(const Block& block) {
    if (!drive.kind.isCached)
        return serve();
    std::unique_lock lock(drive.state);
    const int run = drive.run;
    if (drive.asked.insert(block).second) {
        lock.unlock();
        serve();
        lock.lock();
        drive.cached.insert(block);
        drive.arrival.notify_all();
    }
    drive.arrival.wait(lock, [&] { return drive.run != run || drive.cached.contains(block); });
}

ino_t inodeOf(int file) {
    struct stat status {};
    ::fstat(file, &status);
    return status.st_ino;
}

void onOpen(const char* path, int file) {
    if (file < 0 || !std::string_view(path).starts_with(drive.folder))
        return;
    const ino_t inode = inodeOf(file);
    {
        const std::lock_guard lock(drive.state);
        drive.files.insert(inode);
    }
    request({inode, -1});
}

void onRead(int file, std::size_t length, off_t offset) {
    const ino_t inode = inodeOf(file);
    {
        const std::lock_guard lock(drive.state);
        if (!drive.files.contains(inode))
            return;
    }
    const off_t last = (offset + static_cast<off_t>(length) - 1) / blockLength;
    for (off_t block = offset / blockLength; block <= last; ++block)
        request({inode, block});
}

} // namespace

SlowDrive::SlowDrive(std::string folder, const DriveKind& kind) {
    const std::lock_guard lock(drive.state);
    drive.folder = std::move(folder);
    drive.kind = kind;
    drive.files.clear();
    drive.asked.clear();
    drive.cached.clear();
    isSlow = true;
}

SlowDrive::~SlowDrive() {
    isSlow = false;
    const std::lock_guard lock(drive.state);
    ++drive.run;
    drive.arrival.notify_all();
}

} // namespace orvalen::bench

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    const auto file = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
    if (orvalen::bench::isSlow)
        orvalen::bench::onOpen(path, file);
    return file;
}

ssize_t pread(int file, void* bytes, size_t length, off_t offset) {
    if (orvalen::bench::isSlow)
        orvalen::bench::onRead(file, length, offset);
    return ::syscall(SYS_pread64, file, bytes, length, offset);
}

} // extern "C"
