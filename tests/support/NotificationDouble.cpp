#include "tests/support/NotificationDouble.h"

#include <algorithm>
#include <utility>

namespace kpx::test {

namespace {

/// A reminder handed back from a launch has no identifier, only its text.
bool isSame(const UserNotification& left, const UserNotification& right) {
    if (left.identifier.empty() || right.identifier.empty()) {
        return left.informativeText == right.informativeText;
    }
    return left.identifier == right.identifier;
}

}  // namespace

Json NotificationDouble::describe(const UserNotification& notification, Date delivery) const {
    Json json;
    json["title"] = notification.title;
    json["text"] = notification.informativeText;
    json["delivery"] = m_localTime.format(delivery);
    json["repeat"] = notification.repeatsDaily ? Json("day") : Json();
    json["sound"] = notification.defaultSound ? Json("default") : Json();
    return json;
}

void NotificationDouble::report(const char* what, Json details) {
    Json event;
    event["event"] = "notification";
    event["do"] = what;
    event.update(details);
    m_sink(event);
}

void NotificationDouble::scheduleNotification(const UserNotification& notification) {
    Entry entry{notification, notification.deliveryDate};
    entry.notification.identifier = std::to_string(++m_lastIdentifier);
    report("schedule", describe(notification, notification.deliveryDate));
    const Date now = m_clock.now();
    if (notification.deliveryDate <= now) {
        // Missed: shown once at once, whatever the days gone by.
        deliver(entry, now);
        while (entry.due && *entry.due <= now) {
            entry.due = m_localTime.addingDays(notification.deliveryDate, ++entry.timesRepeated);
        }
    }
    m_scheduled.push_back(std::move(entry));
}

void NotificationDouble::deliver(Entry& entry, Date delivery) {
    report("deliver", describe(entry.notification, delivery));
    if (std::ranges::none_of(m_delivered, [&](const auto& other) { return isSame(other, entry.notification); })) {
        m_delivered.push_back(entry.notification);
    }
    if (!entry.notification.repeatsDaily) {
        entry.due.reset();
    }
}

std::optional<Date> NotificationDouble::nextDue() const {
    std::optional<Date> earliest;
    for (const Entry& entry : m_scheduled) {
        if (entry.due && (!earliest || *entry.due < *earliest)) {
            earliest = entry.due;
        }
    }
    return earliest;
}

void NotificationDouble::wake(Date now) {
    for (Entry& entry : m_scheduled) {
        if (entry.due && *entry.due <= now) {
            deliver(entry, *entry.due);
            if (entry.due) {
                entry.due = m_localTime.addingDays(entry.notification.deliveryDate, ++entry.timesRepeated);
            }
        }
    }
}

void NotificationDouble::removeDeliveredNotification(const UserNotification& notification) {
    report("removeDelivered", Json{{"text", notification.informativeText}});
    std::erase_if(m_delivered, [&](const UserNotification& other) { return isSame(other, notification); });
}

void NotificationDouble::removeScheduledNotification(const UserNotification& notification) {
    report("removeScheduled", Json{{"text", notification.informativeText}});
    std::erase_if(m_scheduled, [&](const Entry& entry) { return isSame(entry.notification, notification); });
}

std::vector<UserNotification> NotificationDouble::scheduled() const {
    std::vector<UserNotification> notifications;
    for (const Entry& entry : m_scheduled) {
        notifications.push_back(entry.notification);
    }
    return notifications;
}

void NotificationDouble::activate(std::size_t index) {
    const UserNotification notification = m_scheduled.at(index).notification;
    if (didActivateNotification) {
        didActivateNotification(notification);
    }
}

}  // namespace kpx::test
