#pragma once

#include "platform/Notifications.h"

namespace orvalen {

/// Uses the desktop's notification service on the session bus. Calls `outcome` on the main thread, within two
/// seconds even if the service does not answer.
class DBusNotifications : public Notifications {
public:
    void post(const Notification& notification, std::function<void(std::optional<Error>)> outcome) override;
};

} // namespace orvalen
