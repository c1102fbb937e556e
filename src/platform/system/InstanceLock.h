#pragma once

#include "core/Descriptor.h"

#include <string>

namespace orvalen {

/// The right to use the data files, for one process at a time. The kernel drops the lock when its process
/// ends, however it ends.
class InstanceLock {
public:
    /// Creates the file and locks it without waiting. Where locks are not supported, or the file cannot be
    /// made, there is nothing to find out and the process goes on.
    explicit InstanceLock(const std::string& file);

    bool heldByAnother() const { return heldByAnother_; }

private:
    Descriptor file_;
    bool heldByAnother_ = false;
};

} // namespace orvalen
