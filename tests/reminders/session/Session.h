#pragma once

#include "reminders/Names.h"
#include "reminders/Schedule.h"

#include <QDBusConnection>
#include <QDBusPendingReply>
#include <QProcess>
#include <QTemporaryDir>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kpx {

// The names on the bus, as the toolkit wants them.
inline const QString theAgent = QString::fromLatin1(agentName);
inline const QString theAgentPath = QString::fromLatin1(agentPath);
inline const QString theProgram = QString::fromLatin1(applicationName);
inline const QString theProgramPath = QString::fromLatin1(applicationPath);

/// Runs the event loop until the condition holds; false when it does not within that time.
bool waitUntil(const std::function<bool()>& condition, int milliseconds = 20000);
/// Runs the event loop for that time: for what is measured over a time, never for something to have happened.
void letPass(int milliseconds);

/// A session of a user who owns nothing yet: folders, and a bus that can start what is installed and nothing else.
class Session {
public:
    Session();
    ~Session();

    /// From now on the bus starts the command when the name is asked for.
    void install(const QString& name, const QString& command);
    /// A connection of its own, as if of another program.
    QDBusConnection connect();
    /// Returns when whatever its connections had to say to one another has been said, answers to answers included.
    /// What other programs do is not waited for.
    void settle();
    /// The same with the agent among them: it has looked at its folder, and done what was due. False when there is
    /// no agent that answers.
    bool settleAgent();

    /// From now on the agent is started from a folder of its own: no window program stands beside it which a
    /// click could start.
    void setAgentApart();
    /// Starts the agent, at that time if one is given ("2026-11-21 07:59:58", or with a speed, "… x1000"), and
    /// returns when it is on the bus.
    void startAgent(const QString& time = {});
    /// Until it is set to 0, each agent started is killed right before its so-many-th step: each message that it
    /// sends and each change that it makes to a file is one.
    void setKilledAtStep(int step) { m_killedAtStep = step; }
    /// Until it is set to nothing, each agent started is killed right before it sends a call of that method.
    void setKilledBefore(const QString& method) { m_killedBefore = method; }
    /// The same, and returns as soon as its process runs.
    void beginAgent(const QString& time);
    std::unique_ptr<QProcess> start(const QString& program, const QStringList& arguments = {},
                                    const QString& time = {});
    /// Kills the agent and the process that would start it again, and returns when the bus knows.
    void killAgent();
    bool isOnBus(const QString& name);
    /// Kills the process that owns the name.
    void killOwner(const QString& name);
    /// The process that owns the agent's name; 0 when there is none.
    qint64 agentProcess();
    /// The process that started it.
    qint64 supervisor() const { return m_agent->processId(); }
    QProcess& agent() { return *m_agent; }
    void endBus();

    QDBusPendingReply<QString> schedule(const QByteArray& text, const QString& day);
    QDBusPendingReply<> call(const QString& method, const QVariantList& arguments);

    QString run(const QString& program, const QStringList& arguments);
    const QProcessEnvironment& environment() const { return m_environment; }
    std::filesystem::path folder() const { return m_folder.path().toStdString(); }
    std::filesystem::path scheduleFolder() const { return folder() / "state/Velmora/reminders"; }
    std::filesystem::path autostartFile() const;
    /// As their files' names tell it.
    std::vector<Reminder> reminders() const;
    bool isScheduled(const QString& identifier) const;
    /// Whether each reminder has been shown at least once.
    bool isAllDelivered() const;

private:
    void askTheBus();

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    QProcess m_bus;
    QString m_address;
    QString m_agentProgram = QStringLiteral(AGENT_PROGRAM);
    std::unique_ptr<QProcess> m_agent;
    int m_killedAtStep = 0;
    QString m_killedBefore;
    std::vector<QString> m_connections;
    QDBusConnection m_connection;
};

}  // namespace kpx
