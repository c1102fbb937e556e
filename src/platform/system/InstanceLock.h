#pragma once

#include "core/Descriptor.h"

#include <string>

namespace orvalen {

/// A lock on the data files for one process at a time. The kernel releases it when the process ends, even if
/// killed.
class InstanceLock {
public:
    /// Creates the file and tries to lock it, without waiting. If the file cannot be created or the file
    /// system has no locks, the lock counts as not held by another process.
    explicit InstanceLock(const std::string& file);

    bool heldByAnother() const { return heldByAnother_; }

private:
    Descriptor file_;
    bool heldByAnother_ = false;
};

} // namespace orvalen
