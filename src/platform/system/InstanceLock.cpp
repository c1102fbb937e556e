#include "platform/system/InstanceLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace orvalen {

InstanceLock::InstanceLock(const std::string& file)
    : descriptor_(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW, 0600)) {
    if (descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0)
        heldByAnother_ = errno == EWOULDBLOCK;
}

InstanceLock::~InstanceLock() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

} // namespace orvalen
