#pragma once

#include "app/Ports.h"
#include "schedule/RefillsToOrder.h"
#include "tests/support/ClockDouble.h"
#include "tests/support/Json.h"

#include <functional>
#include <optional>
#include <vector>

namespace kpx::test {

/// A notification centre in memory. It delivers when the clock passes a due time, a reminder that
/// repeats again on every following day at the same time of day.
class NotificationDouble : public UserNotificationCenter, public Scheduled {
public:
    NotificationDouble(EventSink sink, Clock& clock, const LocalTime& localTime)
        : m_sink(std::move(sink)), m_clock(clock), m_localTime(localTime) {}

    void scheduleNotification(const UserNotification& notification) override;
    void removeDeliveredNotification(const UserNotification& notification) override;
    void removeScheduledNotification(const UserNotification& notification) override;
    std::vector<UserNotification> scheduledNotifications() override { return scheduled(); }
    std::optional<int> standingLead() override { return m_standingLead; }
    void setStandingLead(std::optional<int> days) override;

    /// What the standing reminder says on those days; set before the clock moves.
    std::function<std::optional<RefillsToOrder>(const StandingDays& days,
                                                const std::vector<RemindedPrescription>& reminded)>
        refillsToOrder;

    std::optional<Date> nextDue() const override;
    void wake(Date now) override;

    std::vector<UserNotification> scheduled() const;
    /// Each once, however often it was shown.
    const std::vector<UserNotification>& delivered() const { return m_delivered; }
    /// The user clicks the scheduled reminder. REQUIRES: there is one at the index.
    void activate(std::size_t index);
    /// Whether a standing reminder was delivered and not clicked since.
    bool isStandingDelivered() const { return m_standing.has_value(); }
    /// The user clicks it. REQUIRES: isStandingDelivered().
    void activateStanding();

    /// As a transcript shows it; `delivery` apart, as a daily reminder comes on other days too.
    Json describe(const UserNotification& notification, Date delivery) const;

private:
    struct Entry {
        UserNotification notification;
        /// None for one that does not come again.
        std::optional<Date> due;
        int timesRepeated = 0;
    };
    void deliver(Entry& entry, Date delivery);
    void deliverStanding(Date delivery);
    std::vector<RemindedPrescription> remindedBy(Date delivery) const;
    void report(const char* what, Json details);

    EventSink m_sink;
    Clock& m_clock;
    const LocalTime& m_localTime;
    std::vector<Entry> m_scheduled;
    std::vector<UserNotification> m_delivered;
    int m_lastIdentifier = 0;
    std::optional<int> m_standingLead;
    /// The next 08:00; meaningful while there is a lead.
    Date m_standingDue;
    /// The standing reminder that stands in the centre.
    std::optional<UserNotification> m_standing;
};

}  // namespace kpx::test
