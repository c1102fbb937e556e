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
constexpr int mostFilesTried = 2; ///< after these, it is known whether the system caches the drive
constexpr auto shortestWait = std::chrono::microseconds(100);

using Clock = std::chrono::steady_clock;

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

struct Reading {
    bool hasWaited = false;
    Clock::duration duration{};
};

/// Reads what the tag reader will read. The tag reader reports the errors.
Reading readOnce(const std::string& path) {
    const long before = waitsOfThread();
    const auto began = Clock::now();
    try {
        if (const auto file = openRegularFile(path))
            static_cast<void>(readTags(ShortenedSource(**file)));
    } catch (const std::exception&) { // out of memory
    }
    return {waitsOfThread() != before, Clock::now() - began};
}

} // namespace

struct ReadAhead::Shared : std::enable_shared_from_this<Shared> {
    std::mutex mutex; ///< never held while a file is read
    std::condition_variable wakeUp;
    std::deque<std::string> paths; ///< expected files that neither a thread nor the reader has opened yet
    std::size_t taken = 0;         ///< number of files that are no longer in `paths`
    std::size_t passed = 0;        ///< number of files that the reader has finished
    int withoutWait = 0;           ///< files read in a row without waiting for the drive
    int filesTried = 0;            ///< files that a thread had to wait for and then read again
    Clock::duration firstReadings{};
    Clock::duration secondReadings{}; ///< of the tried files
    bool isResting = false;
    bool isOver = false;

    std::string takeNext() {
        std::string path = std::move(paths.front());
        paths.pop_front();
        ++taken;
        return path;
    }

    /// If reading a file again takes about as long as the first time, the system does not cache this drive.
    /// Reading ahead would then only delay the reader.
    void addTrial(const Reading& first, const Reading& second) {
        ++filesTried;
        firstReadings += first.duration;
        secondReadings += second.duration;
        if (filesTried < mostFilesTried)
            return;
        if (secondReadings * 2 > firstReadings)
            isOver = true;
        else
            startThreads(mostThreads - 1);
    }

    void startThreads(std::size_t count) {
        try {
            for (; count > 0; --count)
                std::thread([self = shared_from_this()] { self->run(); }).detach();
        } catch (const std::system_error&) { // no further thread available
        }
    }

    void run() {
        std::unique_lock lock(mutex);
        for (;;) {
            wakeUp.wait(lock, [this] { return isOver || (!isResting && !paths.empty()); });
            if (isOver)
                return;
            const std::string path = takeNext();
            const bool isTrial = filesTried < mostFilesTried; // then this is the only thread
            lock.unlock();
            const Reading first = readOnce(path);
            const bool readsAgain = isTrial && first.hasWaited;
            const Reading second = readsAgain ? readOnce(path) : Reading();
            lock.lock();
            if (readsAgain)
                addTrial(first, second);
            withoutWait = first.hasWaited ? 0 : withoutWait + 1;
            isResting = isResting || withoutWait >= filesWithoutWait;
        }
    }
};

ReadAhead::ReadAhead() : shared_(std::make_shared<Shared>()) {
    shared_->startThreads(1);
}

ReadAhead::~ReadAhead() {
    const std::lock_guard lock(shared_->mutex);
    shared_->isOver = true;
    shared_->wakeUp.notify_all();
}

void ReadAhead::expect(const std::string& path) {
    const std::lock_guard lock(shared_->mutex);
    shared_->paths.push_back(path);
    if (!shared_->isResting)
        shared_->wakeUp.notify_one();
}

void ReadAhead::passOne() {
    const bool hasWaited = hasReaderWaited();
    const std::lock_guard lock(shared_->mutex);
    ++shared_->passed;
    if (shared_->passed > shared_->taken && !shared_->paths.empty())
        shared_->takeNext();
    if (hasWaited && shared_->isResting) {
        shared_->withoutWait = 0;
        shared_->isResting = false;
        shared_->wakeUp.notify_all();
    }
}

/// Returns whether the reader's thread has waited since the last call. Returns false without a system call if
/// the time since then is too short for a wait.
bool ReadAhead::hasReaderWaited() {
    const auto now = Clock::now();
    const bool isSlow = now - std::exchange(lastPass_, now) > shortestWait;
    return isSlow && std::exchange(waits_, waitsOfThread()) != waits_;
}

} // namespace orvalen
