#pragma once

#include "core/Error.h"

#include <functional>
#include <optional>
#include <string>

namespace orvalen {

struct Notification {
    std::string identifier;
    std::string title;
    std::string body;
};

/// Desktop notifications with the default sound.
class Notifications {
public:
    virtual ~Notifications() = default;
    /// Returns at once. Calls `outcome` later, on any thread, with an error or nullopt. Main thread.
    virtual void post(const Notification& notification,
                      std::function<void(std::optional<Error>)> outcome) = 0;
};

} // namespace orvalen
