#include "agent/Agent.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDebug>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace kpx {

namespace {

constexpr std::chrono::minutes betweenTriesOfTheDisk{1};

}  // namespace

void Agent::takeOver() {
    m_folder.make();
    m_watcher.addPath(QString::fromStdString(m_folder.path().string()));
    const DeliveryLock::Outcome outcome = m_lock.tryToGet(m_folder.path());
    if (outcome == DeliveryLock::Outcome::TakenByAnother) {
        return waitForTheOther();
    }
    if (outcome == DeliveryLock::Outcome::Impossible) {
        // There is nothing that another could deliver, but what was handed over to this one.
        later(m_takingOverIsNear, betweenTriesOfTheDisk, &Agent::takeOver);
    } else {
        m_folder.removeLeftovers();
    }
    const bool isFirst = !std::exchange(m_isDelivering, true);
    reload();
    if (!isFirst) {
        m_folder.setServer(m_server.identity());
    } else if (m_server.identity() != m_folder.server()) {
        serverGone();  // what the notes call shown was shown by another one
    }
    if (std::ranges::find(m_reminders, Phase::Posting, &Reminder::phase) != m_reminders.end()) {
        m_server.prepare();
    }
    handOverWaiting();
    wake();
}

void Agent::waitForTheOther() {
    // A thread of its own, for the system wakes nobody else when the lock is let go.
    std::thread([folder = m_folder.path(), agent = QPointer<Agent>(this), application = QCoreApplication::instance()] {
        DeliveryLock::waitUntilFree(folder);
        QMetaObject::invokeMethod(application, [agent] {
            constexpr std::chrono::milliseconds untilOtherWaitersLetGo{100};
            QTimer::singleShot(untilOtherWaitersLetGo, agent, [agent] { agent->takeOver(); });
        });
    }).detach();
}

void Agent::Wake() {
    reload();
    wake();
}

void Agent::wakeSoon() {
    constexpr std::chrono::milliseconds untilTheBurstIsOver{50};
    later(m_burstIsNear, untilTheBurstIsOver, &Agent::Wake);
}

void Agent::later(bool& isNear, std::chrono::milliseconds pause, void (Agent::*step)()) {
    if (!std::exchange(isNear, true)) {
        m_clock.callAfter(pause, [this, &isNear, step] {
            isNear = false;
            (this->*step)();
        });
    }
}

void Agent::reload() {
    m_watcher.addPath(QString::fromStdString(m_folder.path().string()));  // it may be new
    const auto onDisk = m_folder.load();
    if (!m_isDelivering || !onDisk) {
        if (!onDisk) {
            later(m_reloadIsNear, betweenTriesOfTheDisk, &Agent::Wake);
        }
        return;
    }
    dropAllBut(*onDisk);
    // Looked up in tables: a household has few, but nothing here grows with the square of what it has.
    std::unordered_map<std::string, std::size_t> known;
    for (std::size_t index = 0; index < m_reminders.size(); ++index) {
        known.emplace(m_reminders[index].identifier, index);
    }
    for (const Reminder& reminder : *onDisk) {
        if (reminder.phase == Phase::Withdrawn) {
            continue;
        }
        if (const auto entry = known.find(reminder.identifier); entry == known.end()) {
            m_reminders.push_back(reminder);
        } else {
            adopt(m_reminders.begin() + static_cast<std::ptrdiff_t>(entry->second), reminder);
        }
    }
    if (scheduled && !m_reminders.empty()) {
        scheduled();
    }
}

void Agent::dropAllBut(const std::vector<Reminder>& onDisk) {
    std::unordered_set<std::string_view> kept;
    std::unordered_set<std::string_view> withdrawn;
    for (const Reminder& reminder : onDisk) {
        if (reminder.phase != Phase::Withdrawn) {
            kept.insert(reminder.identifier);
            continue;
        }
        withdrawn.insert(reminder.identifier);
        if (m_server.identity() == m_folder.server()) {
            m_server.close(reminder.notification);
        }
        static_cast<void>(m_folder.remove(reminder));  // what stays is removed at the next look
    }
    std::erase_if(m_reminders, [&](const Reminder& reminder) {
        if (kept.contains(reminder.identifier) || m_unwritten.contains(reminder.identifier)) {
            return false;
        }
        if (!withdrawn.contains(reminder.identifier)) {
            closeNotification(reminder);
        }
        m_tries.erase(reminder.identifier);
        return true;
    });
}

void Agent::adopt(Position position, const Reminder& onDisk) {
    const Reminder known = *position;
    *position = onDisk;
    if (m_unwritten.erase(onDisk.identifier) > 0) {
        // Written by the program meanwhile; what has become of it since is known here.
        change(position, known);
    }
}

void Agent::forget(Position position) {
    m_tries.erase(position->identifier);
    m_reminders.erase(position);
}

QString Agent::Schedule(const QString& identifier, const QByteArray& title, const QByteArray& text,
                        const QString& firstDay, bool sound) {
    const auto day = dayFromText(firstDay.toStdString());
    if (!day || identifier.contains(QLatin1Char('.')) || identifier.contains(QLatin1Char('/'))) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("not a reminder: ") + identifier + firstDay);
        return {};
    }
    const Reminder reminder{.identifier = identifier.isEmpty() ? newReminderIdentifier() : identifier.toStdString(),
                            .firstDay = *day,
                            .deliveredDay = std::nullopt};
    const ReminderContent content{title.toStdString(), text.toStdString(), sound};
    if (!m_folder.add(reminder, content)) {
        m_unwritten.emplace(reminder.identifier, content);
        if (find(reminder.identifier) == m_reminders.end()) {
            m_reminders.push_back(reminder);
        }
        later(m_writingIsNear, betweenTriesOfTheDisk, &Agent::writeUnwritten);
    }
    wakeSoon();
    return QString::fromStdString(reminder.identifier);
}

void Agent::writeUnwritten() {
    std::erase_if(m_unwritten, [this](const auto& unwritten) {
        const auto position = find(unwritten.first);
        if (position == m_reminders.end()) {
            return true;
        }
        if (!m_folder.add(*position, unwritten.second)) {
            return false;
        }
        const auto onDisk = m_folder.find(unwritten.first);
        return !onDisk || m_folder.change(*onDisk, *position);
    });
    if (!m_unwritten.empty()) {
        later(m_writingIsNear, betweenTriesOfTheDisk, &Agent::writeUnwritten);
    }
}

void Agent::RemoveScheduled(const QString& identifier, const QByteArray& text) {
    const std::string found = identifierOf(identifier, text);
    if (m_unwritten.erase(found) > 0) {
        const auto position = find(found);
        closeNotification(*position);
        forget(position);
    }
    if (!found.empty() && !m_folder.withdraw(found)) {
        sendErrorReply(QDBusError::Failed, QStringLiteral("the reminder cannot be removed from the disk"));
    }
    Wake();
}

std::string Agent::identifierOf(const QString& identifier, const QByteArray& text) {
    if (!identifier.isEmpty()) {
        return identifier.toStdString();
    }
    if (const auto onDisk = m_folder.findByText(text.toStdString())) {
        return onDisk->identifier;
    }
    const auto unwritten =
        std::ranges::find(m_unwritten, text.toStdString(), [](const auto& entry) { return entry.second.text; });
    return unwritten == m_unwritten.end() ? std::string() : unwritten->first;
}

bool Agent::change(Position position, const Reminder& to) {
    if (!m_unwritten.contains(position->identifier) && !m_folder.change(*position, to)) {
        qWarning() << "A reminder's state cannot be written to the disk:" << position->identifier.c_str();
        return false;
    }
    *position = to;
    return true;
}

Agent::Position Agent::find(const std::string& identifier) {
    return std::ranges::find(m_reminders, identifier, &Reminder::identifier);
}

Agent::Position Agent::findShown(std::uint32_t notification) {
    return std::ranges::find_if(m_reminders, [&](const Reminder& reminder) {
        return reminder.phase == Phase::Shown && reminder.notification == notification;
    });
}

}  // namespace kpx
