#include "platform/system/MountWatch.h"

#include "core/Descriptor.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <cstdint>
#include <fcntl.h>
#include <iterator>
#include <mutex>
#include <poll.h>
#include <sys/eventfd.h>
#include <thread>
#include <utility>

namespace orvalen {

class MountWatch::Thread {
public:
    Thread(MainQueue& mainQueue, MountRoots roots)
        : roots_(std::move(roots)), mountTable_(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)),
          wakeUp_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), mainQueue_(&mainQueue) {}

    void watch(std::vector<Location> locations, Observer observer) {
        const std::lock_guard lock(mutex_);
        watched_ = std::make_shared<Watched>(Watched{std::move(locations), std::move(observer)});
        wake();
    }

    /// Stops all further posts.
    void end() {
        const std::lock_guard lock(mutex_);
        mainQueue_ = nullptr;
        watched_ = nullptr; // the observer must be destroyed by the main thread
        wake();
    }

    void run() {
        // If the mount table cannot be opened, its descriptor is negative and poll() ignores it.
        pollfd sources[] = {{wakeUp_.number(), POLLIN, 0}, {mountTable_.number(), POLLPRI, 0}};
        std::shared_ptr<const Watched> reportedOn;
        std::vector<Location> reported;
        while (true) {
            ::poll(std::data(sources), std::size(sources), -1);
            std::uint64_t count = 0;
            static_cast<void>(::read(wakeUp_.number(), &count, sizeof count) <
                              0); // fails if only the mount table has changed
            std::unique_lock lock(mutex_);
            if (mainQueue_ == nullptr)
                return;
            const auto watched = watched_;
            if (!watched)
                continue;
            lock.unlock();
            std::vector<Location> now = missing(watched->locations);
            if (watched == reportedOn && now == reported)
                continue;
            reportedOn = watched;
            reported = now;
            lock.lock();
            if (mainQueue_ == nullptr)
                return;
            mainQueue_->post(
                [watched, now = std::move(now)]() mutable { watched->observer(std::move(now)); });
        }
    }

private:
    /// The arguments of one watch() call. The thread keeps them until a later call replaces them.
    struct Watched {
        std::vector<Location> locations;
        Observer observer;
    };

    void wake() const {
        constexpr std::uint64_t one = 1;
        static_cast<void>(::write(wakeUp_.number(), &one, sizeof one) ==
                          sizeof one); // fails only if the counter is full: then the thread wakes anyway
    }

    std::vector<Location> missing(const std::vector<Location>& locations) const {
        std::vector<Location> result;
        std::ranges::copy_if(locations, std::back_inserter(result),
                             [this](const Location& location) { return roots_.isMissing(location.path); });
        return result;
    }

    const MountRoots roots_;
    const Descriptor mountTable_;
    const Descriptor wakeUp_;
    std::mutex mutex_;
    MainQueue* mainQueue_;                   // under mutex_; null after end()
    std::shared_ptr<const Watched> watched_; // under mutex_
};

MountWatch::MountWatch(MainQueue& mainQueue, MountRoots roots)
    : thread_(std::make_shared<Thread>(mainQueue, std::move(roots))) {
    std::thread([thread = thread_] { thread->run(); }).detach();
}

MountWatch::~MountWatch() {
    thread_->end();
}

void MountWatch::watch(std::vector<Location> locations, Observer observer) {
    thread_->watch(std::move(locations), std::move(observer));
}

} // namespace orvalen
