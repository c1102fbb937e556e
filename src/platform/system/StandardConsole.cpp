#include "platform/system/StandardConsole.h"

#include "platform/system/ConsoleText.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <mutex>
#include <poll.h>
#include <string>
#include <unistd.h>
#include <utility>

namespace orvalen {
namespace {

constexpr std::size_t queueLimit = std::size_t{1} << 20; ///< bytes
/// Bytes per system call. Small, so that the progress of a slow reader is noticed.
constexpr std::size_t writeLimit = std::size_t{16} * 1024;
constexpr std::chrono::milliseconds roomLimit{100};
constexpr std::chrono::seconds flushLimit{1};

/// Writes all bytes. Stops at an error, for example if the reader has gone.
void writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), std::min(bytes.size(), writeLimit));
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) { // another process made the shared descriptor non-blocking
            pollfd room{descriptor, POLLOUT, 0};
            ::poll(&room, 1, -1);
        } else if (errno != EINTR) {
            return;
        }
    }
}

} // namespace

/// The queue, and the thread function that empties it.
class StandardConsole::Writer {
public:
    explicit Writer(int descriptor) : descriptor_(descriptor) {}

    void put(std::string line) {
        std::unique_lock lock(mutex_);
        if (isFull() && !stalled_)
            stalled_ = !room_.wait_for(lock, roomLimit, [this] { return !isFull(); });
        if (isFull()) {
            ++leftOut_;
            return;
        }
        queueNotice();
        push(std::move(line));
        lock.unlock();
        work_.notify_one();
    }

    bool waitUntilWritten() {
        std::unique_lock lock(mutex_);
        return written_.wait_for(lock, flushLimit, [this] { return isDone(); });
    }

    void stop() {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        work_.notify_one();
    }

    void run() {
        // Other threads handle signals. Above all, a closed pipe must not end the program.
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, nullptr);

        std::unique_lock lock(mutex_);
        for (;;) {
            work_.wait(lock, [this] { return !lines_.empty() || leftOut_ > 0 || stopping_; });
            const std::string batch = takeBatch();
            if (batch.empty())
                return;
            isWriting_ = true;
            lock.unlock();
            room_.notify_all();
            writeAll(descriptor_, batch);
            lock.lock();
            isWriting_ = stalled_ = false;
            if (isDone())
                written_.notify_all();
        }
    }

private:
    bool isFull() const { return queued_ >= queueLimit; }
    bool isDone() const { return lines_.empty() && leftOut_ == 0 && !isWriting_; }

    void push(std::string line) {
        queued_ += line.size();
        lines_.push_back(std::move(line));
    }

    void queueNotice() {
        if (const auto count = std::exchange(leftOut_, 0))
            push(std::to_string(count) + (count == 1 ? " line left out\n" : " lines left out\n"));
    }

    /// Takes whole lines from the front of the queue. Returns an empty text if the queue is empty.
    std::string takeBatch() {
        std::string batch;
        if (lines_.empty())
            queueNotice();
        while (!lines_.empty() && (batch.empty() || batch.size() + lines_.front().size() <= writeLimit)) {
            batch += lines_.front();
            lines_.pop_front();
        }
        queued_ -= batch.size();
        return batch;
    }

    const int descriptor_;
    std::mutex mutex_; ///< guards everything below
    std::condition_variable work_;
    std::condition_variable room_;
    std::condition_variable written_;
    std::deque<std::string> lines_;
    std::size_t queued_ = 0; ///< bytes in lines_
    std::size_t leftOut_ = 0;
    bool stalled_ = false; ///< a line was dropped after waiting, and nothing was written since
    bool isWriting_ = false;
    bool stopping_ = false;
};

StandardConsole::StandardConsole() : StandardConsole(STDOUT_FILENO) {}

StandardConsole::StandardConsole(int descriptor)
    : writer_(std::make_shared<Writer>(descriptor)), thread_([writer = writer_] { writer->run(); }) {}

StandardConsole::~StandardConsole() {
    writer_->stop();
    if (writer_->waitUntilWritten())
        thread_.join();
    else
        thread_.detach();
}

void StandardConsole::line(std::string_view text) {
    writer_->put(consoleText(text) + '\n');
}

void StandardConsole::flush() {
    writer_->waitUntilWritten();
}

} // namespace orvalen
