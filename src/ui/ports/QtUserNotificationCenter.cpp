#include "ui/ports/QtUserNotificationCenter.h"

#include "region/DateUtilities.h"
#include "reminders/Names.h"
#include "reminders/RefillNotice.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDebug>
#include <QProcess>

#include <algorithm>

namespace kpx {

namespace {

void startFromBeside() {
    if (!QProcess::startDetached(QCoreApplication::applicationDirPath() + QStringLiteral("/velmora-reminders"), {})) {
        qWarning() << "The reminder agent cannot be started.";
    }
}

/// Nobody waits for the answer; an agent that is not there is started, and then finds in the folder what the call
/// was about.
void callAgent(const char* method, const QVariantList& arguments = {}) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    QDBusMessage message =
        QDBusMessage::createMethodCall(QString::fromLatin1(agentName), QString::fromLatin1(agentPath),
                                       QString::fromLatin1(agentName), QString::fromLatin1(method));
    message.setArguments(arguments);
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher] {
        watcher->deleteLater();
        const QDBusError error = watcher->isError() ? watcher->error() : QDBusError();
        if (error.type() == QDBusError::ServiceUnknown ||
            error.name().startsWith(QStringLiteral("org.freedesktop.DBus.Error.Spawn."))) {
            startFromBeside();
        } else if (error.isValid()) {
            qWarning().noquote() << "The reminder agent does not answer:" << error.message();
        }
    });
}

// Bytes, not texts: a text on the bus cannot hold everything that a name may.
QByteArray bytes(const std::string& text) { return QByteArray::fromStdString(text); }

/// As far as it matters here: the day, and whether its 08:00 is past.
LocalTime localTimeNow(const Environment& environment) {
    const Date due = dateAtTimeOfDay(environment.now, static_cast<int>(deliveryTime.count()), 0, 0, environment);
    return {dayOfDate(environment.now, environment.region),
            environment.now < due ? std::chrono::hours(0) : deliveryTime};
}

}  // namespace

QtUserNotificationCenter::QtUserNotificationCenter(std::function<Environment()> environment,
                                                   std::filesystem::path folder, std::chrono::milliseconds betweenTries)
    : m_environment(std::move(environment)), m_folder(std::move(folder)) {
    m_nextTry.setInterval(betweenTries);
    QObject::connect(&m_nextTry, &QTimer::timeout, &m_nextTry, [this] { tryUnwritten(); });
}

void QtUserNotificationCenter::scheduleNotification(const UserNotification& notification) {
    const Reminder reminder{.identifier = newReminderIdentifier(),
                            .firstDay = dayOfDate(notification.deliveryDate, m_environment().region),
                            .deliveredDay = std::nullopt};
    const ReminderContent content{notification.title, notification.informativeText, notification.defaultSound};
    if (m_folder.add(reminder, content)) {
        return callAgent("Wake");
    }
    m_unwritten.push_back({reminder, content});
    m_nextTry.start();
    handToAgent(m_unwritten.back());
}

void QtUserNotificationCenter::handToAgent(const Unwritten& unwritten) {
    callAgent("Schedule", {QString::fromStdString(unwritten.reminder.identifier), bytes(unwritten.content.title),
                           bytes(unwritten.content.text),
                           QString::fromStdString(textFromDay(unwritten.reminder.firstDay)), unwritten.content.sound});
}

void QtUserNotificationCenter::removeDeliveredNotification(const UserNotification& notification) {
    if (notification.isStanding) {
        const auto standing = m_folder.find(standingIdentifier);
        if (standing && standing->phase == Phase::Clicked) {
            Reminder seen = *standing;
            seen.phase = Phase::Waiting;
            static_cast<void>(m_folder.change(*standing, seen));  // else its click is handed over once more
        }
        return callAgent("Wake");
    }
    callAgent("RemoveDelivered",
              {QString::fromStdString(notification.identifier), bytes(notification.informativeText)});
}

void QtUserNotificationCenter::removeScheduledNotification(const UserNotification& notification) {
    const std::string identifier = identifierOf(notification);
    std::erase_if(m_unwritten, [&](const Unwritten& unwritten) { return unwritten.reminder.identifier == identifier; });
    if (identifier.empty()) {
        return callAgent("Wake");
    }
    if (!m_folder.withdraw(identifier)) {
        m_unwithdrawn.push_back(identifier);
        m_nextTry.start();
    }
    // It may hold what the disk did not take.
    callAgent("RemoveScheduled", {QString::fromStdString(identifier), QByteArray()});
}

std::vector<UserNotification> QtUserNotificationCenter::scheduledNotifications() {
    std::vector<UserNotification> notifications;
    for (const Reminder& reminder : m_folder.load().value_or(std::vector<Reminder>())) {
        if (reminder.phase == Phase::Withdrawn || isStanding(reminder) ||
            std::ranges::find(m_unwithdrawn, reminder.identifier) != m_unwithdrawn.end()) {
            continue;
        }
        if (const FoundContent found = m_folder.read(reminder); found.state == FoundContent::State::Whole) {
            notifications.push_back(notificationOf(reminder, found.content));
        }
    }
    for (const Unwritten& unwritten : m_unwritten) {
        notifications.push_back(notificationOf(unwritten.reminder, unwritten.content));
    }
    return notifications;
}

UserNotification QtUserNotificationCenter::notificationOf(const Reminder& reminder,
                                                          const ReminderContent& content) const {
    const Region region = m_environment().region;
    UserNotification notification;
    notification.identifier = reminder.identifier;
    notification.title = content.title;
    notification.informativeText = content.text;
    notification.deliveryDate = dateAtTimeOfDay(dateOfDay(reminder.firstDay, region),
                                                static_cast<int>(deliveryTime.count()), 0, 0, {{}, region});
    notification.repeatsDaily = true;
    notification.defaultSound = content.sound;
    return notification;
}

std::string QtUserNotificationCenter::identifierOf(const UserNotification& notification) const {
    if (!notification.identifier.empty()) {
        return notification.identifier;
    }
    if (const auto onDisk = m_folder.findByText(notification.informativeText)) {
        return onDisk->identifier;
    }
    const auto unwritten = std::ranges::find(m_unwritten, notification.informativeText,
                                             [](const Unwritten& entry) { return entry.content.text; });
    return unwritten == m_unwritten.end() ? std::string() : unwritten->reminder.identifier;
}

std::optional<int> QtUserNotificationCenter::standingLead() {
    return m_unkeptLead ? m_unkeptLead->days : m_folder.standingLead();
}

void QtUserNotificationCenter::setStandingLead(std::optional<int> days) {
    m_unkeptLead = StandingLead{days};
    tryUnwritten();
}

void QtUserNotificationCenter::tryUnwritten() {
    std::erase_if(m_unwritten,
                  [this](const Unwritten& unwritten) { return m_folder.add(unwritten.reminder, unwritten.content); });
    std::erase_if(m_unwithdrawn, [this](const std::string& identifier) { return m_folder.withdraw(identifier); });
    if (m_unkeptLead && m_folder.setStandingLead(m_unkeptLead->days, localTimeNow(m_environment()))) {
        m_unkeptLead.reset();
    }
    // An agent that was not there to be handed them may be there now; it knows them by their identifiers.
    std::ranges::for_each(m_unwritten, handToAgent);
    if (m_unwritten.empty() && m_unwithdrawn.empty() && !m_unkeptLead) {
        m_nextTry.stop();
    } else if (!m_nextTry.isActive()) {
        m_nextTry.start();
    }
    callAgent("Wake");
}

void QtUserNotificationCenter::startAgentIfNeeded() {
    const auto reminders = ReminderFolder(remindersFolder()).load();
    if (!reminders || !reminders->empty()) {
        callAgent("Wake");
    }
}

}  // namespace kpx
