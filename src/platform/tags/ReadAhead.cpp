#include "platform/tags/ReadAhead.h"

#include "platform/tags/ByteSource.h"
#include "platform/tags/FileTags.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <sys/resource.h>
#include <system_error>
#include <thread>
#include <utility>

namespace orvalen {

namespace {

constexpr std::size_t mostThreads = 16;
constexpr std::size_t mostBytesOfFile = 128 << 10; ///< 32 MB for all files ahead
constexpr int filesWithoutWait = 64;               ///< after this number in a row, the files count as cached
constexpr int mostWaitsInVain = 16;                ///< at this number, reading ahead stops
constexpr auto shortestWait = std::chrono::microseconds(100);

/// Returns how often this thread has waited, for example for a drive. Reading a cached file needs no wait.
long waitsOfThread() {
    struct rusage usage {};
    ::getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

/// A file that seems to end after `mostBytesOfFile` bytes have been read.
class ShortenedSource : public ByteSource {
public:
    explicit ShortenedSource(const ByteSource& file) : file_(file) {}
    std::uint64_t size() const override { return file_.size(); }
    std::string read(std::uint64_t offset, std::size_t length) const override {
        std::string bytes = file_.read(offset, std::min(length, left_));
        left_ -= bytes.size();
        return bytes;
    }

private:
    const ByteSource& file_;
    mutable std::size_t left_ = mostBytesOfFile;
};

/// Reads what the tag reader will read. The tag reader reports the errors.
void readOnce(const std::string& path) {
    try {
        if (const auto file = openRegularFile(path))
            static_cast<void>(readTags(ShortenedSource(**file)));
    } catch (const std::exception&) { // out of memory
    }
}

} // namespace

struct ReadAhead::Shared {
    std::mutex mutex; ///< never held while a file is read
    std::condition_variable wakeUp;
    std::deque<std::string> paths; ///< expected files that neither a thread nor the reader has opened yet
    std::size_t taken = 0;         ///< number of files that are no longer in `paths`
    std::size_t passed = 0;        ///< number of files that the reader has finished
    int withoutWait = 0;           ///< files read in a row without waiting for the drive
    bool isResting = false;
    bool isOver = false;

    std::string takeNext() {
        std::string path = std::move(paths.front());
        paths.pop_front();
        ++taken;
        return path;
    }

    void run() {
        std::unique_lock lock(mutex);
        for (;;) {
            wakeUp.wait(lock, [this] { return isOver || (!isResting && !paths.empty()); });
            if (isOver)
                return;
            const std::string path = takeNext();
            lock.unlock();
            const long before = waitsOfThread();
            readOnce(path);
            const bool hasWaited = waitsOfThread() != before;
            lock.lock();
            withoutWait = hasWaited ? 0 : withoutWait + 1;
            isResting = isResting || withoutWait >= filesWithoutWait;
        }
    }
};

ReadAhead::ReadAhead() : shared_(std::make_shared<Shared>()) {}

ReadAhead::~ReadAhead() {
    end();
}

void ReadAhead::expect(const std::string& path) {
    const std::lock_guard lock(shared_->mutex);
    shared_->paths.push_back(path);
    if (shared_->isResting || shared_->isOver)
        return;
    if (threads_ < mostThreads) {
        ++threads_;
        try {
            std::thread([shared = shared_] { shared->run(); }).detach();
        } catch (const std::system_error&) { // no thread available: the reader reads alone
        }
    }
    shared_->wakeUp.notify_one();
}

void ReadAhead::passOne() {
    const bool hasWaited = hasReaderWaited();
    std::unique_lock lock(shared_->mutex);
    ++shared_->passed;
    if (shared_->passed > shared_->taken && !shared_->paths.empty())
        shared_->takeNext();
    // If more than 16 later files were taken, the thread that took this file has very likely finished it.
    const bool wasAhead = shared_->passed + mostThreads < shared_->taken;
    waitsInVain_ = hasWaited && wasAhead ? waitsInVain_ + 1 : 0;
    if (hasWaited && shared_->isResting) {
        shared_->withoutWait = 0;
        shared_->isResting = false;
        shared_->wakeUp.notify_all();
    }
    lock.unlock();
    if (waitsInVain_ == mostWaitsInVain) // the system seems not to cache files of this drive
        end();
}

/// Returns whether the reader's thread has waited since the last call. Returns false without a system call if
/// the time since then is too short for a wait.
bool ReadAhead::hasReaderWaited() {
    const auto now = std::chrono::steady_clock::now();
    const bool isSlow = now - std::exchange(lastPass_, now) > shortestWait;
    return isSlow && std::exchange(waits_, waitsOfThread()) != waits_;
}

void ReadAhead::end() {
    const std::lock_guard lock(shared_->mutex);
    shared_->isOver = true;
    shared_->wakeUp.notify_all();
}

} // namespace orvalen
