#include "agent/Agent.h"
#include "core/DataFiles.h"
#include "reminders/Names.h"
#include "tests/reminders/session/HeldClock.h"
#include "tests/reminders/session/killer/KillAtStep.h"
#include "tests/reminders/simulation/Commands.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdlib>

using namespace kpx;

namespace {

LocalTime timeFromWords(const QString& day, const QString& seconds) {
    return {dayFromText(day.toStdString()).value_or(LocalDay()), std::chrono::seconds(seconds.toInt())};
}

void tellTime(HeldClock& clock) {
    const LocalTime now = clock.localTime();
    Commands::tell(
        QStringLiteral("at\t%1\t%2").arg(QString::fromStdString(textFromDay(now.day))).arg(now.timeOfDay.count()));
}

/// Everything that is due on the way happens at its time, and is over before time goes on.
void pass(HeldClock& clock, std::chrono::seconds time) {
    for (bool isDone = false; !isDone;) {
        time -= clock.passToNext(time);
        tellTime(clock);
        isDone = !clock.doNext() && time == std::chrono::seconds(0);
        settle();
    }
}

}  // namespace

/// simulated_agent DAY SECONDS: the agent, started at that time of that day.
int main(int argc, char** argv) {
    std::signal(SIGXFSZ, SIG_IGN);  // a disk that takes nothing more answers with an error
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (arguments.size() < 3 || !bus.registerService(QString::fromLatin1(agentName))) {
        return EXIT_FAILURE;
    }
    HeldClock clock(timeFromWords(arguments.at(1), arguments.at(2)));
    const std::filesystem::path data = qEnvironmentVariable("XDG_DATA_HOME").toStdString();
    Agent agent(bus, ReminderFolder(remindersFolder()), clock, {data / dataFolderName, {}},
                [] { return Region("en_US", "UTC"); });
    bus.registerObject(QString::fromLatin1(agentPath), &agent, QDBusConnection::ExportAllSlots);
    Commands commands([&](const QStringList& words) {
        if (words.first() == QStringLiteral("pass")) {
            pass(clock, std::chrono::seconds(words.at(1).toInt()));
        } else if (words.first() == QStringLiteral("set")) {
            clock.set(timeFromWords(words.at(1), words.at(2)));
        } else if (words.first() == QStringLiteral("kill")) {
            killAtStep(words.at(1).toInt());
        }
    });
    return QCoreApplication::exec();
}
