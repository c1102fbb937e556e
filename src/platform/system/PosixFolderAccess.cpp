#include "platform/system/PosixFolderAccess.h"

#include "core/Text.h"

#include <algorithm>
#include <condition_variable>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace orvalen {
namespace {

/// Start of our bookmarks. The digit is the version of the format.
constexpr std::string_view bookmarkMark = "orvalen-location-1:";

constexpr std::chrono::milliseconds oneLimit{500};
constexpr std::chrono::seconds allLimit{1};
/// Enough to check other drives while some do not answer.
constexpr std::size_t mostThreads = 8;

bool isUsablePath(std::string_view path) {
    return path.starts_with('/') && path.find('\0') == std::string_view::npos && isValidUtf8(path);
}

bool isReadable(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return false;
    const int needed = S_ISDIR(status.st_mode) ? R_OK | X_OK : R_OK;
    return ::faccessat(AT_FDCWD, path.c_str(), needed, AT_EACCESS) == 0;
}

} // namespace

/// The paths that a background thread is checking now.
struct PosixFolderAccess::Unanswered {
    std::mutex mutex;
    std::set<std::string> paths;
};

/// Paths and the answers to them, shared by the threads that check them.
class PosixFolderAccess::Questions {
public:
    Questions(std::vector<std::string> paths, Question question, std::shared_ptr<Unanswered> unanswered)
        : paths_(std::move(paths)), answers_(paths_.size()), question_(std::move(question)),
          unanswered_(std::move(unanswered)) {
        const std::lock_guard lock(unanswered_->mutex);
        unanswered_->paths.insert(paths_.begin(), paths_.end());
    }

    static void askAll(const std::shared_ptr<Questions>& questions) {
        for (std::size_t i = std::min(questions->paths_.size(), mostThreads); i > 0; --i)
            std::thread([questions] { questions->run(); }).detach();
    }

    /// Returns the answers that exist after `limit`, in the order of the paths.
    std::vector<std::optional<bool>> await(std::chrono::milliseconds limit) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, limit, [this] { return answered_ == paths_.size(); });
        return answers_;
    }

private:
    void run() {
        std::unique_lock lock(mutex_);
        while (next_ < paths_.size()) {
            const std::size_t index = next_++;
            lock.unlock();
            const bool answer = question_(paths_[index]);
            {
                const std::lock_guard unansweredLock(unanswered_->mutex);
                unanswered_->paths.erase(paths_[index]);
            }
            lock.lock();
            answers_[index] = answer;
            ++answered_;
            changed_.notify_one();
        }
    }

    const std::vector<std::string> paths_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t next_ = 0;                     // under mutex_
    std::size_t answered_ = 0;                 // under mutex_
    std::vector<std::optional<bool>> answers_; // under mutex_
    const Question question_;
    const std::shared_ptr<Unanswered> unanswered_;
};

PosixFolderAccess::PosixFolderAccess(MountRoots roots) : PosixFolderAccess(isReadable, std::move(roots)) {}

PosixFolderAccess::PosixFolderAccess(Question isReadable, MountRoots roots)
    : isReadable_(std::move(isReadable)), unanswered_(std::make_shared<Unanswered>()),
      roots_(std::move(roots)) {}

bool PosixFolderAccess::start(const Location& location) {
    return !granted({location}, oneLimit).empty();
}

std::vector<Location> PosixFolderAccess::startAll(const std::vector<Location>& locations) {
    return granted(locations, allLimit);
}

std::vector<Location> PosixFolderAccess::granted(const std::vector<Location>& locations,
                                                 std::chrono::milliseconds limit) {
    std::vector<std::string> asked;
    {
        const std::lock_guard lock(unanswered_->mutex);
        for (const Location& location : locations)
            if (isUsablePath(location.path) && !unanswered_->paths.contains(location.path))
                asked.push_back(location.path);
    }
    const auto questions = std::make_shared<Questions>(asked, isReadable_, unanswered_);
    Questions::askAll(questions);
    const auto answers = questions->await(limit);

    std::set<std::string> refused;
    for (std::size_t i = 0; i < asked.size(); ++i)
        if (!answers[i].value_or(true))
            refused.insert(asked[i]);
    std::vector<Location> result;
    for (const Location& location : locations)
        if (isUsablePath(location.path) && !refused.contains(location.path))
            result.push_back(location);
    return result;
}

void PosixFolderAccess::stop(const Location&) {}

bool PosixFolderAccess::isAway(const Location& location) {
    return roots_.isMissing(location.path);
}

Expected<std::string> PosixFolderAccess::makeBookmark(const Location& location) {
    if (!isUsablePath(location.path))
        return failure("The location is not an absolute path.");
    return std::string(bookmarkMark) + location.path;
}

Expected<Location> PosixFolderAccess::resolveBookmark(std::string_view bookmark) {
    if (!bookmark.starts_with(bookmarkMark))
        return failure("The bookmark is not one of this program's.");
    const std::string_view path = bookmark.substr(bookmarkMark.size());
    if (!isUsablePath(path))
        return failure("The bookmark contains no absolute path.");
    return Location{std::string(path)};
}

} // namespace orvalen
