#pragma once

#include "tests/reminders/session/Neighbours.h"
#include "tests/reminders/session/Session.h"

#include <QProcess>

#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace kpx {

/// A process that is given commands and answers them line by line.
class Part {
public:
    Part(const QProcessEnvironment& environment, const QString& program, const QStringList& arguments);
    ~Part();

    /// Gives the command and waits until all it caused is over; false when the process ended instead.
    bool give(const QString& command, const std::function<void(const QStringList& words)>& told);
    /// What it tells by itself.
    void listen(const std::function<void(const QStringList& words)>& told);
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    qint64 process() const { return m_process.processId(); }
    void kill();

private:
    QProcess m_process;
};

struct SimulationSize {
    int days = 30;
    int reminders = 80;
    unsigned seed = 1;
};

/// A household, its desktop and everything that can go wrong, day by day. The time of the day moves only where this
/// moves it; who is killed dies at a counted step.
class Simulation {
public:
    /// `histories` holds the history of each day on which it changes, as "2026-01-05.plist".
    Simulation(const SimulationSize& size, std::filesystem::path histories);

    /// Lives all days; then prints what came of them, and a line for each standing reminder. True when nothing was
    /// lost, late or doubled.
    bool run();

private:
    /// What a reminder has lived through.
    struct Life {
        LocalDay firstDay;
        bool promised = false;
        std::map<LocalDay, int> shown;
        bool clicked = false;
        bool opened = false;
        bool inTime = false;
    };
    enum class Trouble {
        None,
        AgentKilledAtSteps,
        ServerRefuses,
        ServerSilent,
        ServerAbsent,
        NoServer,
        ServerKilled,
        MachineOff,
        Suspended,
        ClockSet,
        Traveller,
        OtherSession,
        DiskFull,
    };
    static constexpr int troubles = 13;

    /// Each kind comes once before one comes again.
    Trouble nextTrouble();
    void day(Trouble trouble);
    void scheduleSome(Trouble trouble);
    void schedule(int number, LocalDay firstDay, int killedAtStep);
    void morning(Trouble trouble);
    void clickSome();
    void passUntil(std::chrono::seconds timeOfDay, int killedAtStep = 0);
    void otherSessionTakesOver();

    void startAgent(int killedAtStep = 0);
    void startProgram();
    void startServer();
    void endServer();
    /// Gives the part the command, and counts what the program tells meanwhile.
    bool give(Part& part, const QString& command);
    void hear(const QStringList& words);
    void lookAtScreens();
    void countShown(const QString& body);
    int random(int most) { return static_cast<int>(m_random() % static_cast<unsigned>(most)); }
    bool report() const;

    SimulationSize m_size;
    std::filesystem::path m_histories;
    std::mt19937 m_random;
    Session m_session;
    Session m_otherSession;
    std::unique_ptr<NotificationDaemonDouble> m_server;
    std::unique_ptr<NotificationDaemonDouble> m_otherServer;
    std::map<const NotificationDaemonDouble*, std::size_t> m_seen;  // how many of what it showed were counted
    std::unique_ptr<Part> m_agent;
    std::unique_ptr<Part> m_program;
    LocalTime m_now;
    int m_dayNumber = 0;
    int m_scheduled = 0;
    int m_kills = 0;
    int m_killsToCome = 0;                // of agents that are started while time passes
    std::map<std::string, Life> m_lives;  // by the reminder's text
    std::set<LocalDay> m_daysOff;
    std::vector<std::string> m_standing;  // "2026-01-05<tab>line|line"
    std::vector<Trouble> m_troublesToCome;
    std::map<std::string, int> m_troubles;
};

}  // namespace kpx
