#pragma once

#include "app/Ports.h"
#include "reminders/ReminderFolder.h"

#include <QTimer>

#include <chrono>
#include <functional>
#include <vector>

namespace kpx {

/// Reminders, put into the folder from which the reminder agent delivers them. What is scheduled or withdrawn is on
/// the disk when the call returns; then the agent is woken: by the bus where it is installed, else it is started from
/// beside this program. Without a bus nobody is woken, and whoever reads the folder next delivers.
///
/// While the folder cannot be written, the reminder is handed to the agent, and the folder is tried again each
/// minute. No call waits for anybody.
class QtUserNotificationCenter : public UserNotificationCenter {
public:
    /// `environment` tells the instant and where the user is.
    explicit QtUserNotificationCenter(std::function<Environment()> environment,
                                      std::filesystem::path folder = remindersFolder(),
                                      std::chrono::milliseconds betweenTries = std::chrono::minutes(1));

    /// Comes at 08:00 of the delivery date's calendar day, and daily.
    void scheduleNotification(const UserNotification& notification) override;
    // A notification without an identifier is found by its text.
    void removeDeliveredNotification(const UserNotification& notification) override;
    void removeScheduledNotification(const UserNotification& notification) override;
    std::vector<UserNotification> scheduledNotifications() override;
    std::optional<int> standingLead() override;
    void setStandingLead(std::optional<int> days) override;

    /// Sees to it that the agent runs if there is anything for it to do, on desktops that start nothing at login.
    static void startAgentIfNeeded();

private:
    struct Unwritten {
        Reminder reminder;
        ReminderContent content;
    };
    struct StandingLead {
        std::optional<int> days;
    };
    static void handToAgent(const Unwritten& unwritten);
    std::string identifierOf(const UserNotification& notification) const;
    UserNotification notificationOf(const Reminder& reminder, const ReminderContent& content) const;
    void tryUnwritten();

    std::function<Environment()> m_environment;
    ReminderFolder m_folder;
    std::vector<Unwritten> m_unwritten;        // reminders that the disk did not take
    std::vector<std::string> m_unwithdrawn;    // identifiers of those that it did not let go
    std::optional<StandingLead> m_unkeptLead;  // what the disk did not take of the standing reminder
    QTimer m_nextTry;
};

}  // namespace kpx
