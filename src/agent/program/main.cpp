#include "agent/Agent.h"
#include "agent/Autostart.h"
#include "agent/SystemClock.h"
#include "core/DataFiles.h"
#include "reminders/Names.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDebug>
#include <QStandardPaths>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <ctime>

namespace kpx {

namespace {

/// The same places in which the window program looks.
RefillSources refillSources() {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString resources = QCoreApplication::applicationDirPath() + QStringLiteral("/../share/velmora");
    return {std::filesystem::path(data.toStdString()) / dataFolderName, resources.toStdString()};
}

Region regionNow() {
    static CurrentRegion current(variableOfProcess);
    return current.region();
}

int runAgent(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (QCoreApplication::arguments().contains(QStringLiteral("--if-any")) &&
        ReminderFolder(remindersFolder()).load().value_or(std::vector<Reminder>(1)).empty()) {
        return EXIT_SUCCESS;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qWarning() << "No session bus:" << bus.lastError().message();
        return EXIT_FAILURE;
    }
    bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
                QStringLiteral("Disconnected"), &application, SLOT(quit()));
    // Whoever has the name keeps the schedule. To be second is no failure: the first does the work.
    if (!bus.registerService(QString::fromLatin1(agentName))) {
        return EXIT_SUCCESS;
    }
    SystemClock clock;
    const RefillSources sources = refillSources();
    Agent agent(bus, ReminderFolder(remindersFolder()), clock, sources, regionNow);
    agent.scheduled = [resources = sources.resources] {
        startAtLogin(QCoreApplication::applicationFilePath().toStdString(), resources, remindersFolder());
    };
    if (!bus.registerObject(QString::fromLatin1(agentPath), &agent, QDBusConnection::ExportAllSlots)) {
        return EXIT_FAILURE;
    }
    // A bus that ended before the loop below began is not announced again.
    return bus.isConnected() ? QCoreApplication::exec() : EXIT_SUCCESS;
}

bool isEndedOnPurpose(int status) {
    return WIFEXITED(status) || (WIFSIGNALED(status) && (WTERMSIG(status) == SIGTERM || WTERMSIG(status) == SIGINT ||
                                                         WTERMSIG(status) == SIGHUP));
}

}  // namespace

}  // namespace kpx

/// The agent runs in a child, and this process does nothing but start another when it crashes: nobody else would,
/// before the next login. When this process ends, so does the child.
int main(int argc, char** argv) {
    constexpr std::time_t soon = 60;
    constexpr unsigned longestPause = 600;
    unsigned pause = 1;
    for (;;) {
        const std::time_t start = std::time(nullptr);
        const pid_t parent = ::getpid();
        const pid_t child = ::fork();
        if (child < 0) {
            return EXIT_FAILURE;
        }
        if (child == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            return ::getppid() == parent ? kpx::runAgent(argc, argv) : EXIT_FAILURE;
        }
        int status = 0;
        while (::waitpid(child, &status, 0) < 0) {
        }
        if (kpx::isEndedOnPurpose(status)) {
            return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_SUCCESS;
        }
        ::sleep(pause);
        pause = std::time(nullptr) - start > soon ? 1 : std::min(2 * pause, longestPause);
    }
}
