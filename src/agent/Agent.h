#pragma once

#include "agent/AgentClock.h"
#include "agent/HandOver.h"
#include "agent/NotificationServer.h"
#include "region/Environment.h"
#include "reminders/RefillNotice.h"
#include "reminders/ReminderFolder.h"
#include "reminders/Tries.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusContext>
#include <QFileSystemWatcher>
#include <QObject>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kpx {

/// Delivers what lies in the reminders' folder: shows each reminder every day from 08:00 of its first day on, until
/// it is clicked, and hands the clicked one to the window program, which then withdraws it. The folder is watched;
/// who put a reminder there does not matter.
///
/// No moment at which this process may be killed loses a reminder or shows one twice for a day:
///
/// 1. The day is recorded *before* the notification goes to the server, as "posting", until the server
///    answers. After a kill in between nobody can say whether the message got out. The next start posts again
///    only on a server which lets it take the place of the one that may stand there already; on others it
///    counts as delivered and comes the next day. The other order would show it twice after every kill between
///    the two, and this one loses nothing but, at worst, one of many daily showings.
/// 2. A click is recorded before the program is told. It is told again until it withdraws the reminder.
/// 3. The number that the server gave is kept, so that the next run knows the notification when it is clicked.
///
/// The steps are renames, which outlive the process at once and the machine some milliseconds later. When the
/// machine dies within those, what was on its screen is gone too, and showing it again is right.
///
/// Of several agents of one user, in sessions of their own, one delivers; the others do what they are asked, and
/// one of them takes over when it ends.
class Agent : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "example.velmora.Velmora.Reminders")

public:
    /// The clock outlives it. `region` tells where the user is now.
    Agent(const QDBusConnection& bus, ReminderFolder folder, AgentClock& clock, RefillSources sources,
          std::function<Region()> region);
    ~Agent() override;

    /// Called when there is something to deliver; may be empty.
    std::function<void()> scheduled;

public Q_SLOTS:
    // The methods on the bus. Titles and texts are the bytes of UTF-8, exactly as the notification has them.

    /// For whoever cannot write to the folder: what cannot be written here either is kept in memory, delivered
    /// from there, and tried to be written each minute. `firstDay` is "2026-11-21". Answers the identifier: the
    /// one given, or a new one for an empty one.
    QString Schedule(const QString& identifier, const QByteArray& title, const QByteArray& text,
                     const QString& firstDay, bool sound);
    /// Takes the notification off the screen; the reminder comes again the next day. With an empty identifier
    /// these two look for a reminder of that text, a delivered one if there is one.
    void RemoveDelivered(const QString& identifier, const QByteArray& text);
    /// The reminder is gone for good. No such reminder: nothing happens.
    void RemoveScheduled(const QString& identifier, const QByteArray& text);
    /// The folder has changed: for where it cannot be watched.
    void Wake();

private:
    using Position = std::vector<Reminder>::iterator;

    // What lies in the folder (AgentFolder.cpp).
    void takeOver();
    void waitForTheOther();
    void reload();
    /// A burst of changes, its own ones among them, is read once.
    void wakeSoon();
    /// Unless the same is to come already.
    void later(bool& isNear, std::chrono::milliseconds pause, void (Agent::*step)());
    void dropAllBut(const std::vector<Reminder>& onDisk);
    void adopt(Position position, const Reminder& onDisk);
    void forget(Position position);
    void writeUnwritten();
    /// Records the change on disk and in memory; false when it could not be recorded.
    bool change(Position position, const Reminder& to);
    Position find(const std::string& identifier);
    Position findShown(std::uint32_t notification);
    std::string identifierOf(const QString& identifier, const QByteArray& text);

    // Delivering (Agent.cpp).
    void serverReady(bool isNew);
    void serverGone();
    void wake();
    void deliver();
    bool isToBeTried(const Reminder& reminder);
    /// None when there is nothing to say; what that means has been recorded.
    std::optional<ReminderContent> contentToShow(Position position);
    void post(Position position, const ReminderContent& content);
    void posted(const Reminder& before, const Reminder& after, const Posted& posted);
    void answeredLate(const std::string& identifier, std::uint32_t notification);
    void tryFailed(const std::string& identifier, Failure failure);
    void serverFailed(Failure failure);
    void tryAgainLater();
    void showInWindows();
    void showInWindow(Position position);
    void notificationClicked(std::uint32_t notification, const std::string& identifier, const QString& token);
    void notificationClosed(std::uint32_t notification);
    void closeNotification(const Reminder& reminder);
    void handOver(const Reminder& reminder, const QString& token);
    void handOverWaiting();

    ReminderFolder m_folder;
    DeliveryLock m_lock;
    AgentClock& m_clock;
    RefillSources m_sources;
    std::function<Region()> m_region;
    NotificationServer m_server;
    HandOver m_handOver;
    QFileSystemWatcher m_watcher;
    std::vector<Reminder> m_reminders;
    std::map<std::string, ReminderContent> m_unwritten;  // of the reminders that the disk has not taken yet
    std::map<std::string, Tries> m_tries;                // of what no server took today
    std::set<std::string> m_beingHandedOver;             // whose click the program has not answered yet
    std::set<std::string> m_beingShown;                  // of which the program has not said that its window stands
    bool m_isDelivering = false;
    bool m_posting = false;  // one at a time: a server is not flooded
    bool m_takingOverIsNear = false;
    bool m_burstIsNear = false;
    bool m_reloadIsNear = false;
    bool m_writingIsNear = false;
    int m_nextTry = 0;  // counts the settings of its timer
};

}  // namespace kpx
