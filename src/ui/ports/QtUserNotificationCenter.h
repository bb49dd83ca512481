#pragma once

#include "app/Ports.h"

namespace kpx {

/// Writes to the log what it is asked to do.
class QtUserNotificationCenter : public UserNotificationCenter {
public:
    void scheduleNotification(const UserNotification& notification) override;
    void removeDeliveredNotification(const UserNotification& notification) override;
    void removeScheduledNotification(const UserNotification& notification) override;
};

}  // namespace kpx
