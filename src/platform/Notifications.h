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

/// The desktop's notifications, shown at once with its default sound.
class Notifications {
public:
    virtual ~Notifications() = default;
    /// Returns at once. The outcome, an error or nothing, arrives later on any thread. Main thread.
    virtual void post(const Notification& notification,
                      std::function<void(std::optional<Error>)> outcome) = 0;
};

} // namespace orvalen
