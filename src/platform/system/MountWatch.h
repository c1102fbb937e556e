#pragma once

#include "platform/DriveWatch.h"
#include "platform/system/MountRoots.h"

#include <memory>

namespace orvalen {

class MainQueue;

/// Looks the locations up again whenever the kernel reports that something was mounted or unmounted. A thread
/// of its own looks them up, so that a drive that does not answer delays only later reports.
class MountWatch : public DriveWatch {
public:
    explicit MountWatch(MainQueue& mainQueue, MountRoots roots = {});
    /// Never waits for a drive: a thread that is looking one up ends later, without a report.
    ~MountWatch() override;
    MountWatch(const MountWatch&) = delete;
    MountWatch& operator=(const MountWatch&) = delete;

    void watch(std::vector<Location> locations, Observer observer) override;

private:
    class Thread;
    std::shared_ptr<Thread> thread_; ///< shared with the running thread, which may outlive this object
};

} // namespace orvalen
