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
    const bool shows = !shouldPresentNotification || shouldPresentNotification(entry.notification);
    if (shows) {
        report("deliver", describe(entry.notification, delivery));
    }
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
    if (m_standingLead && (!earliest || m_standingDue < *earliest)) {
        earliest = m_standingDue;
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
    while (m_standingLead && m_standingDue <= now) {
        deliverStanding(m_standingDue);
        m_standingDue = m_localTime.addingDays(m_standingDue, 1);
    }
}

void NotificationDouble::setStandingLead(std::optional<int> days) {
    if (!m_standingLead) {
        const Date now = m_clock.now();
        const Date today = *m_localTime.parse(m_localTime.format(now).substr(0, 10) + "T08:00:00");
        m_standingDue = today > now ? today : m_localTime.addingDays(today, 1);
    }
    m_standingLead = days;
}

void NotificationDouble::deliverStanding(Date delivery) {
    const auto refills = refillsToOrder({.day = delivery, .missed = 0, .lead = *m_standingLead}, remindedBy(delivery));
    if (!refills) {
        return;
    }
    report("deliver", Json{{"standing", true}, {"title", refills->title}, {"text", refills->text}});
    m_standing.emplace();
    m_standing->title = refills->title;
    m_standing->informativeText = refills->text;
    m_standing->deliveryDate = delivery;
    m_standing->isStanding = true;
}

std::vector<RemindedPrescription> NotificationDouble::remindedBy(Date delivery) const {
    std::vector<RemindedPrescription> reminded;
    for (const Entry& entry : m_scheduled) {
        const auto prescription = prescriptionFromReminderText(entry.notification.informativeText);
        if (prescription && entry.notification.deliveryDate <= delivery) {
            reminded.push_back(*prescription);
        }
    }
    return reminded;
}

void NotificationDouble::removeDeliveredNotification(const UserNotification& notification) {
    if (notification.isStanding) {
        m_standing.reset();
        return;
    }
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

void NotificationDouble::activateStanding() {
    const UserNotification notification = *m_standing;
    if (didActivateNotification) {
        didActivateNotification(notification);
    }
}

}  // namespace kpx::test
