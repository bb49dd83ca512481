#pragma once

#include "app/Ports.h"

namespace kpx {

/// Reminders, kept and shown by the reminder agent. The bus starts it where it is installed; else it is started
/// from beside this program. When it cannot be reached, only the log says so.
///
/// A call returns when the agent has the change on disk, or after a few seconds at most.
class QtUserNotificationCenter : public UserNotificationCenter {
public:
    /// The agent takes the delivery date's calendar day; its reminders come at 08:00, and daily.
    void scheduleNotification(const UserNotification& notification) override;
    // A notification without an identifier is found by its text.
    void removeDeliveredNotification(const UserNotification& notification) override;
    void removeScheduledNotification(const UserNotification& notification) override;

    /// Sees to it that the agent runs if there is anything for it to do, on desktops that start nothing at login.
    static void wakeAgent();
};

}  // namespace kpx
