#pragma once

#include "platform/DriveWatch.h"
#include "platform/system/MountRoots.h"

#include <memory>

namespace orvalen {

class MainQueue;

/// Checks the locations after each watch() call and whenever the mount table changes. A separate thread
/// checks them. A drive that does not answer therefore delays the next report, but never the caller.
class MountWatch : public DriveWatch {
public:
    explicit MountWatch(MainQueue& mainQueue, MountRoots roots = {});
    /// Never waits for a drive. A thread that is checking a location ends later, without a report.
    ~MountWatch() override;
    MountWatch(const MountWatch&) = delete;
    MountWatch& operator=(const MountWatch&) = delete;

    void watch(std::vector<Location> locations, Observer observer) override;

private:
    class Thread;
    std::shared_ptr<Thread> thread_; ///< shared with the thread, which may outlive this object
};

} // namespace orvalen
