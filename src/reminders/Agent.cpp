#include "reminders/Agent.h"

#include <QDBusError>
#include <QDateTime>
#include <QDebug>
#include <QRandomGenerator>
#include <QTimer>

#include <algorithm>

namespace kpx {

namespace {

/// Begins with the time, so that identifiers sort in the order in which they were given.
std::string newIdentifier() {
    return QStringLiteral("%1%2")
        .arg(QDateTime::currentMSecsSinceEpoch(), 12, 16, QLatin1Char('0'))
        .arg(QRandomGenerator::system()->generate64(), 16, 16, QLatin1Char('0'))
        .toStdString();
}

Reminder withoutNotification(Reminder reminder) {
    reminder.phase = Phase::Waiting;
    reminder.notification = 0;
    return reminder;
}

}  // namespace

Agent::Agent(const QDBusConnection& bus, ReminderFolder folder)
    : m_folder(std::move(folder)), m_reminders(m_folder.load()), m_server(bus), m_handOver(bus), m_alarm([this] {
          wake();
      }) {
    m_server.ready = [this] { serverReady(); };
    m_server.gone = [this] { serverGone(); };
    m_server.clicked = [this](auto notification, const auto& identifier, const auto& token) {
        notificationClicked(notification, identifier, token);
    };
    m_server.closed = [this](auto notification) { notificationClosed(notification); };
    m_handOver.applicationAppeared = [this] { handOverWaiting(); };
    if (m_server.identity() != m_folder.server()) {
        serverGone();  // what the notes call shown was shown by another one
    }
    QTimer::singleShot(0, this, [this] {
        if (std::ranges::find(m_reminders, Phase::Posting, &Reminder::phase) != m_reminders.end()) {
            m_server.prepare();
        }
        handOverWaiting();
        wake();
    });
}

void Agent::serverReady() {
    m_folder.setServer(m_server.identity());
    // Left by a run that was killed in the midst of posting.
    for (auto position = m_reminders.begin(); position != m_reminders.end(); ++position) {
        if (position->phase == Phase::Posting && position->deliveredDay) {
            Reminder settled = withoutNotification(*position);
            if (m_server.replacesByTag()) {
                settled.deliveredDay = *settled.deliveredDay - std::chrono::days(1);
            }
            change(position, settled);
        }
    }
    m_refused.clear();
    postNext();
}

void Agent::wake() {
    const LocalTime now = localTimeNow();
    for (auto position = m_reminders.begin(); position != m_reminders.end(); ++position) {
        change(position, withSaneDeliveredDay(*position, now));
    }
    m_alarm.set(nextDueDay(m_reminders, now));
    m_refused.clear();
    postNext();
}

void Agent::postNext() {
    const LocalTime now = localTimeNow();
    while (!m_posting) {
        const auto due = std::ranges::find_if(m_reminders, [&](const auto& reminder) {
            return isDue(reminder, now) && std::ranges::find(m_refused, reminder.identifier) == m_refused.end();
        });
        if (due == m_reminders.end()) {
            return;
        }
        if (!m_server.isReady()) {
            return m_server.prepare();
        }
        const auto content = m_folder.read(*due);
        if (!content) {
            qWarning() << "A reminder's file is damaged and was set aside:" << due->identifier.c_str();
            m_reminders.erase(due);
            continue;
        }
        closeNotification(due);  // yesterday's
        const Reminder before = withoutNotification(*due);
        Reminder posting = before;
        posting.deliveredDay = lastDueDay(now);
        posting.phase = Phase::Posting;
        if (!change(due, posting)) {
            return;  // the disk takes nothing now; the next wake tries again
        }
        m_posting = true;
        const Reminder after = withoutNotification(posting);
        m_server.post(after, *content, [=, this](auto notification) { posted(before, after, notification); });
    }
}

void Agent::posted(const Reminder& before, const Reminder& after, std::optional<std::uint32_t> notification) {
    m_posting = false;
    const auto position = find(after.identifier);
    if (position == m_reminders.end()) {  // withdrawn meanwhile
        if (notification) {
            m_server.close(*notification);
        }
        return postNext();
    }
    if (!notification) {
        change(position, before);
        m_refused.push_back(after.identifier);
    } else if (position->phase != Phase::Clicked) {
        Reminder shown = *position;
        shown.phase = Phase::Shown;
        shown.notification = *notification;
        change(position, shown);
    }
    m_folder.synchronize();
    postNext();
}

void Agent::serverGone() {
    for (auto position = m_reminders.begin(); position != m_reminders.end(); ++position) {
        if (position->phase == Phase::Shown) {
            change(position, withoutNotification(*position));
        }
    }
}

void Agent::notificationClicked(std::uint32_t notification, const std::string& identifier, const QString& token) {
    const auto position = identifier.empty() ? findShown(notification) : find(identifier);
    if (position == m_reminders.end()) {
        return;  // somebody else's notification
    }
    closeNotification(position);
    Reminder clicked = withoutNotification(*position);
    clicked.phase = Phase::Clicked;
    change(position, clicked);
    m_folder.synchronize();
    handOver(clicked, token);
}

void Agent::notificationClosed(std::uint32_t notification) {
    const auto position = findShown(notification);
    if (position != m_reminders.end()) {
        change(position, withoutNotification(*position));
    }
}

void Agent::handOver(const Reminder& reminder, const QString& token) {
    if (std::ranges::find(m_beingHandedOver, reminder.identifier) != m_beingHandedOver.end()) {
        return;
    }
    const auto content = m_folder.read(reminder);
    if (!content) {
        qWarning() << "A clicked reminder's file is damaged and was set aside:" << reminder.identifier.c_str();
        m_reminders.erase(find(reminder.identifier));
        return;
    }
    m_beingHandedOver.push_back(reminder.identifier);
    m_handOver.give(reminder, *content, token,
                    [this, identifier = reminder.identifier] { std::erase(m_beingHandedOver, identifier); });
}

void Agent::handOverWaiting() {
    const auto reminders = m_reminders;  // handing over may drop a damaged one
    for (const Reminder& reminder : reminders) {
        if (reminder.phase == Phase::Clicked) {
            handOver(reminder, {});
        }
    }
}

QString Agent::Schedule(const QByteArray& title, const QByteArray& text, const QString& firstDay, bool sound) {
    const auto day = dayFromText(firstDay.toStdString());
    if (!day) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("not a day: ") + firstDay);
        return {};
    }
    const Reminder reminder{.identifier = newIdentifier(), .firstDay = *day, .deliveredDay = std::nullopt};
    if (!m_folder.add(reminder, {title.toStdString(), text.toStdString(), sound})) {
        sendErrorReply(QDBusError::Failed, QStringLiteral("the reminder cannot be written to the disk"));
        return {};
    }
    m_reminders.push_back(reminder);
    QTimer::singleShot(0, this, [this] {
        wake();
        if (scheduled) {
            scheduled();
        }
    });
    return QString::fromStdString(reminder.identifier);
}

void Agent::RemoveDelivered(const QString& identifier, const QByteArray& text) {
    const auto position = find(identifier, text);
    if (position != m_reminders.end()) {
        closeNotification(position);
        notificationClosed(position->notification);
    }
}

void Agent::RemoveScheduled(const QString& identifier, const QByteArray& text) {
    const auto position = find(identifier, text);
    if (position == m_reminders.end()) {
        return;
    }
    if (!m_folder.remove(*position)) {
        sendErrorReply(QDBusError::Failed, QStringLiteral("the reminder cannot be removed from the disk"));
        return;
    }
    m_reminders.erase(position);
    wake();
}

bool Agent::change(Position position, const Reminder& to) {
    if (!m_folder.change(*position, to)) {
        qWarning() << "A reminder's state cannot be written to the disk:" << position->identifier.c_str();
        return false;
    }
    *position = to;
    return true;
}

void Agent::closeNotification(Position position) {
    if (position->phase == Phase::Shown) {
        m_server.close(position->notification);
    }
}

Agent::Position Agent::find(const std::string& identifier) {
    return std::ranges::find(m_reminders, identifier, &Reminder::identifier);
}

Agent::Position Agent::findShown(std::uint32_t notification) {
    return std::ranges::find_if(m_reminders, [&](const Reminder& reminder) {
        return reminder.phase == Phase::Shown && reminder.notification == notification;
    });
}

Agent::Position Agent::find(const QString& identifier, const QByteArray& text) {
    if (!identifier.isEmpty()) {
        return find(identifier.toStdString());
    }
    auto found = m_reminders.end();
    for (auto position = m_reminders.begin(); position != m_reminders.end(); ++position) {
        const auto content = m_folder.read(*position);
        if (!content || content->text != text.toStdString()) {
            continue;
        }
        if (position->deliveredDay) {
            return position;
        }
        found = found == m_reminders.end() ? position : found;
    }
    return found;
}

}  // namespace kpx
