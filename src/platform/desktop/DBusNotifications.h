#pragma once

#include "platform/Notifications.h"

namespace orvalen {

/// The desktop's notification service on the session bus. The outcome comes on the main thread, after the
/// call; within two seconds where the service is silent.
class DBusNotifications : public Notifications {
public:
    void post(const Notification& notification, std::function<void(std::optional<Error>)> outcome) override;
};

} // namespace orvalen
