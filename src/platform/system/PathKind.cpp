#include "platform/system/PathKind.h"

#include <chrono>
#include <future>
#include <memory>
#include <mutex>
#include <set>
#include <sys/stat.h>
#include <thread>
#include <utility>

namespace orvalen {
namespace {

constexpr std::chrono::milliseconds limit{500};

/// The paths that background threads are checking. Never destroyed, because a thread can outlive main().
struct Unanswered {
    std::mutex mutex;
    std::set<std::string> paths; // under mutex
};

Unanswered& unanswered() {
    static auto* instance = new Unanswered;
    return *instance;
}

PathKind ask(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return PathKind::absent;
    return S_ISDIR(status.st_mode) ? PathKind::folder : PathKind::file;
}

} // namespace

std::optional<PathKind> pathKind(const std::string& path) {
    {
        const std::lock_guard lock(unanswered().mutex);
        if (!unanswered().paths.insert(path).second)
            return std::nullopt;
    }
    std::promise<PathKind> answer;
    auto arrival = answer.get_future();
    std::thread([path, answer = std::move(answer)]() mutable {
        const PathKind kind = ask(path);
        const std::lock_guard lock(unanswered().mutex);
        unanswered().paths.erase(path);
        answer.set_value(kind);
    }).detach();
    if (arrival.wait_for(limit) == std::future_status::ready)
        return arrival.get();
    return std::nullopt;
}

} // namespace orvalen
