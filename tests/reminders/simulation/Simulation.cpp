#include "tests/reminders/simulation/Simulation.h"

#include "reminders/ReminderFolder.h"
#include "tests/reminders/simulation/Household.h"

#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>

namespace kpx {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::seconds evening = 18h;
constexpr std::chrono::seconds night = 23h;
const QStringList capabilities = {QStringLiteral("body"), QStringLiteral("actions"),
                                  QStringLiteral("x-dunst-stack-tag")};
const std::vector<std::string> names = {
    "quiet days",       "agent killed at steps", "server refuses", "server silent", "server absent",
    "no server at all", "server killed",         "machine off",    "suspended",     "clock set",
    "traveller",        "other session",         "disk full"};

QString text(LocalDay day) { return QString::fromStdString(textFromDay(day)); }

/// As the system's table of locks tells it: "1: FLOCK ADVISORY WRITE PROCESS DEVICE:INODE 0 EOF".
bool isLockedBy(qint64 process, const std::filesystem::path& file) {
    struct stat properties {};
    if (::stat(file.c_str(), &properties) != 0) {
        return false;
    }
    const std::string inode = ':' + std::to_string(properties.st_ino);
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        std::istringstream words(line);
        std::string number, kind, strength, access, owner, place;
        words >> number >> kind >> strength >> access >> owner >> place;
        if (kind == "FLOCK" && owner == std::to_string(process) && place.ends_with(inode)) {
            return true;
        }
    }
    return false;
}

}  // namespace

Simulation::Simulation(const SimulationSize& size, std::filesystem::path histories)
    : m_size(size), m_histories(std::move(histories)), m_random(size.seed), m_now{*dayFromText("2026-01-01"), night} {
    // What is started in their name never comes to the bus: calls wait for the next one that the simulation starts.
    for (Session* session : {&m_session, &m_otherSession}) {
        session->install(theProgram, QStringLiteral("/bin/sleep 60"));
        session->install(theAgent, QStringLiteral("/bin/sleep 60"));
    }
}

bool Simulation::run() {
    takeOverHistory(m_histories, textFromDay(m_now.day), m_session.folder() / "data");
    startServer();
    startProgram();
    give(*m_program, QStringLiteral("day\t") + text(m_now.day));
    give(*m_program, QStringLiteral("standing\t3"));
    startAgent();
    for (m_dayNumber = 1; m_dayNumber <= m_size.days; ++m_dayNumber) {
        // The last days are quiet, so that everything promised has had its day.
        day(m_dayNumber + 3 > m_size.days ? Trouble::None : nextTrouble());
    }
    return report();
}

Simulation::Trouble Simulation::nextTrouble() {
    if (m_troublesToCome.empty()) {
        constexpr int quietDays = 3;
        for (int trouble = 1 - quietDays; trouble < troubles; ++trouble) {
            m_troublesToCome.push_back(static_cast<Trouble>(std::max(trouble, 0)));
        }
        std::ranges::shuffle(m_troublesToCome, m_random);
    }
    const Trouble next = m_troublesToCome.back();
    m_troublesToCome.pop_back();
    return next;
}

void Simulation::day(Trouble trouble) {
    ++m_troubles[names.at(static_cast<std::size_t>(trouble))];
    if (!m_server) {
        startServer();  // the agent's clock still shows last night
    }
    m_now.day += std::chrono::days(1);
    m_now.timeOfDay = 0s;
    if (!m_agent || !m_agent->isRunning()) {
        startAgent();
    }
    give(*m_agent, QStringLiteral("set\t%1\t0").arg(text(m_now.day)));
    morning(trouble);
    takeOverHistory(m_histories, textFromDay(m_now.day), m_session.folder() / "data");
    passUntil(evening);
    clickSome();
    scheduleSome(trouble);
    passUntil(night);
}

void Simulation::morning(Trouble trouble) {
    const LocalDay today = m_now.day;
    const auto later = std::chrono::minutes(480 + 1 + random(300));
    switch (trouble) {
        case Trouble::AgentKilledAtSteps:
            passUntil(8h - 1s);
            m_killsToCome = 1 + random(6);
            passUntil(8h, 1 + random(60));
            break;
        case Trouble::ServerRefuses:
            m_server->isRefusing = true;
            passUntil(later);
            m_server->isRefusing = false;
            break;
        case Trouble::ServerSilent:
            m_server->isSilent = true;
            passUntil(later);
            m_server->isSilent = false;
            break;
        case Trouble::ServerAbsent:
            endServer();
            passUntil(8h + std::chrono::seconds(random(170)));  // the third try would be the window's
            startServer();
            break;
        case Trouble::NoServer:
            endServer();
            passUntil(later);
            break;
        case Trouble::ServerKilled:
            passUntil(8h - 1s);
            m_server->isSilent = true;
            passUntil(8h);
            endServer();
            startServer();
            break;
        case Trouble::MachineOff:
            m_daysOff.insert(today);
            m_agent.reset();
            m_program.reset();
            endServer();
            m_now = {today + std::chrono::days(1), std::chrono::hours(random(2) == 0 ? 9 : 6)};
            ++m_dayNumber;
            startServer();
            startAgent();
            break;
        case Trouble::Suspended:
            passUntil(7h);
            m_now.timeOfDay = later;
            give(*m_agent, QStringLiteral("set\t%1\t%2").arg(text(today)).arg(m_now.timeOfDay.count()));
            break;
        case Trouble::ClockSet:
            passUntil(9h);
            m_now.timeOfDay = 5h;
            give(*m_agent, QStringLiteral("set\t%1\t%2").arg(text(today)).arg(m_now.timeOfDay.count()));
            break;
        case Trouble::Traveller:
            passUntil(8h + 30min);
            m_now = {today - std::chrono::days(1), 23h};
            give(*m_agent, QStringLiteral("set\t%1\t%2").arg(text(m_now.day)).arg(m_now.timeOfDay.count()));
            passUntil(23h + 59min);
            m_now = {today, 1min};
            give(*m_agent, QStringLiteral("set\t%1\t%2").arg(text(today)).arg(m_now.timeOfDay.count()));
            break;
        case Trouble::OtherSession:
            otherSessionTakesOver();
            break;
        default:
            break;
    }
    passUntil(14h);
}

void Simulation::otherSessionTakesOver() {
    m_otherServer = std::make_unique<NotificationDaemonDouble>(m_otherSession.connect(), capabilities);
    m_otherServer->appear();
    QProcessEnvironment environment = m_otherSession.environment();
    for (const char* variable : {"XDG_STATE_HOME", "XDG_DATA_HOME"}) {
        environment.insert(QLatin1String(variable), m_session.environment().value(QLatin1String(variable)));
    }
    Part other(environment, QStringLiteral(AGENT_PROGRAM), {text(m_now.day), QStringLiteral("28000")});
    waitUntil([&] { return m_otherSession.isOnBus(theAgent); });
    passUntil(7h + 50min);
    m_agent->kill();
    ++m_kills;
    m_agent.reset();
    // It is told the time once it has taken over.
    waitUntil([&] { return isLockedBy(other.process(), m_session.scheduleFolder() / "lock"); });
    give(other, QStringLiteral("set\t%1\t28799").arg(text(m_now.day)));
    give(other, QStringLiteral("pass\t3600"));
    lookAtScreens();
    other.kill();
    m_otherServer->disappear();
    m_seen.erase(m_otherServer.get());
    m_otherServer.reset();
    m_now.timeOfDay = 9h;
    startAgent();
}

void Simulation::passUntil(std::chrono::seconds timeOfDay, int killedAtStep) {
    if (killedAtStep > 0) {
        give(*m_agent, QStringLiteral("kill\t%1").arg(killedAtStep));
    }
    while (m_now.timeOfDay < timeOfDay) {
        if (m_agent->isRunning() &&
            give(*m_agent, QStringLiteral("pass\t%1").arg((timeOfDay - m_now.timeOfDay).count()))) {
            m_now.timeOfDay = timeOfDay;
        } else {
            ++m_kills;
            startAgent(m_killsToCome-- > 0 ? 1 + random(60) : 0);
        }
        lookAtScreens();
    }
    give(*m_agent, QStringLiteral("kill\t0"));
    lookAtScreens();
}

void Simulation::scheduleSome(Trouble trouble) {
    const int daysLeft = m_size.days - m_dayNumber - 3;
    const int left = m_size.reminders - m_scheduled;
    if (daysLeft <= 0 || left <= 0) {
        return;
    }
    const int count = (left + daysLeft - 1) / daysLeft;
    if (trouble == Trouble::DiskFull) {
        setDiskFull(m_program->process(), true);
        setDiskFull(m_agent->process(), true);
    }
    for (int number = 0; number < count; ++number) {
        const LocalDay first = m_now.day + std::chrono::days(1 + random(std::min(daysLeft, 12)));
        schedule(m_scheduled++, first, trouble != Trouble::DiskFull && random(8) == 0 ? 1 + random(20) : 0);
    }
    if (trouble == Trouble::DiskFull) {
        setDiskFull(m_program->process(), false);
        setDiskFull(m_agent->process(), false);
    }
}

void Simulation::schedule(int number, LocalDay firstDay, int killedAtStep) {
    for (int attempt = 0;; ++attempt) {
        const std::string name = "Prescription: Drug " + std::to_string(number) + "\r for patient: Try " +
                                 std::to_string(attempt) + "\r is due";
        m_lives[name].firstDay = firstDay;
        if (killedAtStep > 0) {
            give(*m_program, QStringLiteral("kill\t%1").arg(killedAtStep));
        }
        const bool lives =
            give(*m_program, QStringLiteral("schedule\t%1\t%2").arg(QString::fromStdString(name), text(firstDay)));
        if (lives) {
            give(*m_program, QStringLiteral("kill\t0"));
        } else {
            ++m_kills;
            startProgram();
        }
        if (m_lives[name].promised) {
            return;
        }
        killedAtStep = 0;  // the user tries again
    }
}

void Simulation::clickSome() {
    if (!m_program || !m_program->isRunning()) {
        startProgram();
    }
    const auto open = m_server ? m_server->open : std::map<uint, NotificationDaemonDouble::Notification>();
    for (const auto& [notification, shown] : open) {
        if (random(2) == 0) {
            continue;
        }
        const bool isKilledBefore = random(6) == 0;
        if (isKilledBefore) {
            m_agent->kill();
            ++m_kills;
            startAgent();
        }
        QString name = shown.body;
        const auto life = m_lives.find(name.replace(QLatin1Char('\n'), QLatin1Char('\r')).toStdString());
        if (life != m_lives.end()) {
            life->second.clicked = true;
        }
        m_server->click(notification);
        waitUntil([&] {
            m_program->listen([this](const QStringList& words) { hear(words); });
            return life == m_lives.end() || life->second.opened;
        });
        give(*m_agent, QStringLiteral("pass\t0"));
    }
}

void Simulation::startAgent(int killedAtStep) {
    QProcessEnvironment environment = m_session.environment();
    environment.insert(QStringLiteral("KILL_AT_STEP"), QString::number(killedAtStep));
    m_agent = std::make_unique<Part>(environment, QStringLiteral(AGENT_PROGRAM),
                                     QStringList{text(m_now.day), QString::number(m_now.timeOfDay.count())});
    waitUntil([this] { return m_session.isOnBus(theAgent) || !m_agent->isRunning(); });
    give(*m_agent, QStringLiteral("pass\t0"));
    lookAtScreens();
}

void Simulation::startProgram() {
    m_program = std::make_unique<Part>(m_session.environment(), QStringLiteral(SIMULATED_PROGRAM), QStringList());
    waitUntil([this] { return m_session.isOnBus(theProgram); });
}

void Simulation::startServer() {
    m_server = std::make_unique<NotificationDaemonDouble>(m_session.connect(), capabilities);
    m_server->appear();
    if (m_agent && m_agent->isRunning()) {
        give(*m_agent, QStringLiteral("pass\t0"));
    }
}

void Simulation::endServer() {
    lookAtScreens();
    m_server->disappear();
    m_seen.erase(m_server.get());
    m_server.reset();
}

bool Simulation::give(Part& part, const QString& command) {
    const bool lives = part.give(command, [this](const QStringList& words) { hear(words); });
    if (m_program) {
        m_program->listen([this](const QStringList& words) { hear(words); });
    }
    return lives;
}

void Simulation::hear(const QStringList& words) {
    const std::string name = words.size() > 1 ? words.at(1).toStdString() : std::string();
    if (words.first() == QStringLiteral("at")) {
        m_now = {*dayFromText(name), std::chrono::seconds(words.at(2).toInt())};
        lookAtScreens();
    } else if (words.first() == QStringLiteral("promised")) {
        m_lives[name].promised = true;
    } else if (words.first() == QStringLiteral("opened")) {
        m_lives[name].opened = true;
    } else if (words.first() == QStringLiteral("window")) {
        countShown(words.at(1));
    }
}

void Simulation::lookAtScreens() {
    for (const NotificationDaemonDouble* server : {m_server.get(), m_otherServer.get()}) {
        for (std::size_t& seen = m_seen[server]; server && seen < server->shown.size(); ++seen) {
            QString body = server->shown[seen].body;
            const bool isStanding = server->shown[seen].title == QStringLiteral("Refills to order");
            countShown(body.replace(QLatin1Char('\n'), QLatin1Char(isStanding ? '|' : '\r')));
        }
    }
}

void Simulation::countShown(const QString& body) {
    const std::string name = body.toStdString();
    if (name.starts_with("Prescription: ")) {
        ++m_lives[name].shown[m_now.day];
    } else {
        m_standing.push_back(textFromDay(m_now.day) + "\t" + name);
    }
}

bool Simulation::report() const {
    int promised = 0;
    int onTheirDay = 0;
    int twice = 0;
    int lost = 0;
    int clicked = 0;
    int opened = 0;
    for (const auto& [name, life] : m_lives) {
        if (!life.promised) {
            continue;
        }
        LocalDay first = life.firstDay;
        while (m_daysOff.contains(first)) {
            first += std::chrono::days(1);
        }
        ++promised;
        const bool isInTime = !life.shown.empty() && life.shown.begin()->first == first;
        onTheirDay += isInTime ? 1 : 0;
        lost += life.shown.empty() ? 1 : 0;
        const bool isTwice = std::ranges::any_of(life.shown, [](const auto& shown) { return shown.second > 1; });
        twice += isTwice ? 1 : 0;
        clicked += life.clicked ? 1 : 0;
        opened += life.opened ? 1 : 0;
        if (!isInTime || isTwice) {
            std::cout << "wrong: " << name.substr(14, 10) << " first " << textFromDay(life.firstDay);
            for (const auto& [shownDay, times] : life.shown) {
                std::cout << " " << textFromDay(shownDay) << "×" << times;
            }
            std::cout << "\n";
        }
    }
    for (const auto& [trouble, days] : m_troubles) {
        std::cout << "trouble\t" << trouble << "\t" << days << "\n";
    }
    for (const LocalDay off : m_daysOff) {
        std::cout << "off\t" << textFromDay(off) << "\n";
    }
    for (const std::string& standing : m_standing) {
        std::cout << "standing\t" << standing << "\n";
    }
    std::cout << "total\t" << promised << " promised, " << onTheirDay << " shown on their day, " << twice
              << " twice on a day, " << lost << " lost, " << clicked << " clicked, " << opened << " opened, " << m_kills
              << " kills\n";
    return promised == m_size.reminders && onTheirDay == promised && twice == 0 && lost == 0 && opened == clicked;
}

}  // namespace kpx
