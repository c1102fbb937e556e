#include "platform/system/InstanceLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace orvalen {

InstanceLock::InstanceLock(const std::string& file)
    : file_(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW, 0600)) {
    if (file_.isOpen() && ::flock(file_.number(), LOCK_EX | LOCK_NB) != 0)
        heldByAnother_ = errno == EWOULDBLOCK;
}

} // namespace orvalen
