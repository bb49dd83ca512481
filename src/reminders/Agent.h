#pragma once

#include "reminders/Alarm.h"
#include "reminders/HandOver.h"
#include "reminders/NotificationServer.h"
#include "reminders/ReminderFolder.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>

#include <functional>
#include <string>
#include <vector>

namespace kpx {

/// Keeps the schedule, shows each reminder every day from 08:00 of its first day on, until it is clicked, and
/// hands the clicked one to the window program, which then withdraws it.
///
/// No moment at which this process may be killed loses a reminder or shows one twice for a day:
///
/// 1. What is scheduled or withdrawn is on disk before the caller gets its answer.
/// 2. The day is recorded *before* the notification goes to the server, as "posting", until the server
///    answers. After a kill in between nobody can say whether the message got out. The next start posts again
///    only on a server which lets it take the place of the one that may stand there already; on others it
///    counts as delivered and comes the next day. The other order would show it twice after every kill between
///    the two, and this one loses nothing but, at worst, one of many daily showings.
/// 3. A click is recorded before the program is told. It is told again until it withdraws the reminder.
///
/// The steps of 2 and 3 are renames, which outlive the process at once and the machine some milliseconds
/// later. When the machine dies within those, what was on its screen is gone too, and showing it again is right.
class Agent : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "example.velmora.Velmora.Reminders")

public:
    Agent(const QDBusConnection& bus, ReminderFolder folder);

    /// Called after each scheduling; may be empty.
    std::function<void()> scheduled;

public Q_SLOTS:
    // The methods on the bus. Titles and texts are the bytes of UTF-8, exactly as the notification has them.

    /// `firstDay` is "2026-11-21". Answers the new reminder's identifier; an error when it could not be kept.
    QString Schedule(const QByteArray& title, const QByteArray& text, const QString& firstDay, bool sound);
    /// Takes the notification off the screen; the reminder comes again the next day. With an empty identifier
    /// these two look for a reminder of that text, a delivered one if there is one.
    void RemoveDelivered(const QString& identifier, const QByteArray& text);
    /// The reminder is gone for good. No such reminder: nothing happens.
    void RemoveScheduled(const QString& identifier, const QByteArray& text);

private:
    using Position = std::vector<Reminder>::iterator;

    void serverReady();
    void wake();
    void postNext();
    void posted(const Reminder& before, const Reminder& after, std::optional<std::uint32_t> notification);
    void serverGone();
    void notificationClicked(std::uint32_t notification, const std::string& identifier, const QString& token);
    void notificationClosed(std::uint32_t notification);
    void handOver(const Reminder& reminder, const QString& token);
    void handOverWaiting();

    /// Records the change on disk and in memory; false when it could not be recorded.
    bool change(Position position, const Reminder& to);
    void closeNotification(Position position);
    Position find(const std::string& identifier);
    Position findShown(std::uint32_t notification);
    Position find(const QString& identifier, const QByteArray& text);

    ReminderFolder m_folder;
    std::vector<Reminder> m_reminders;
    NotificationServer m_server;
    HandOver m_handOver;
    Alarm m_alarm;
    bool m_posting = false;                      // one at a time: a server is not flooded
    std::vector<std::string> m_refused;          // identifiers that the server took not; until the next wake
    std::vector<std::string> m_beingHandedOver;  // identifiers whose click the program has not answered yet
};

}  // namespace kpx
