#include "region/DateUtilities.h"
#include "reminders/RefillNotice.h"
#include "tests/reminders/session/killer/KillAtStep.h"
#include "tests/reminders/simulation/Commands.h"
#include "ui/SingleInstance.h"
#include "ui/ports/QtUserNotificationCenter.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdlib>

using namespace kpx;

namespace {

void tellOf(const char* what, const UserNotification& reminder) {
    QString text = QString::fromStdString(reminder.isStanding ? std::string("standing") : reminder.informativeText);
    Commands::tell(QLatin1String(what) + QLatin1Char('\t') + text.replace(QLatin1Char('\n'), QLatin1Char('|')));
}

UserNotification reminderOf(const QString& text, const QString& day) {
    UserNotification reminder;
    reminder.title = "title";
    reminder.informativeText = text.toStdString();
    reminder.deliveryDate = dateOfDay(dayFromText(day.toStdString()).value_or(LocalDay()), Region("en_US", "UTC"));
    return reminder;
}

}  // namespace

/// The window program without its windows: what it does with reminders, through the same classes.
int main(int argc, char** argv) {
    std::signal(SIGXFSZ, SIG_IGN);  // a disk that takes nothing more answers with an error
    QCoreApplication application(argc, argv);
    Environment environment{Date(), Region("en_US", "UTC")};
    QtUserNotificationCenter centre([&] { return environment; });
    SingleInstance instance;
    if (!instance.claim()) {
        return EXIT_FAILURE;
    }
    instance.reminderClicked = [&](const UserNotification& reminder) {
        tellOf("opened", reminder);
        centre.removeDeliveredNotification(reminder);
        if (!reminder.isStanding) {
            centre.removeScheduledNotification(reminder);
        }
    };
    instance.reminderToBeShown = [](const UserNotification& reminder) {
        QString text = QString::fromStdString(reminder.informativeText);
        Commands::tell(QStringLiteral("window\t") + text.replace(QLatin1Char('\n'), QLatin1Char('|')));
    };
    Commands commands([&](const QStringList& words) {
        if (words.first() == QStringLiteral("schedule")) {
            centre.scheduleNotification(reminderOf(words.at(1), words.at(2)));
            tellOf("promised", reminderOf(words.at(1), words.at(2)));
        } else if (words.first() == QStringLiteral("standing")) {
            centre.setStandingLead(words.at(1).toInt());
        } else if (words.first() == QStringLiteral("day")) {
            const LocalDay day = dayFromText(words.at(1).toStdString()).value_or(LocalDay());
            environment.now = dateAtTimeOfDay(dateOfDay(day, environment.region), 23, 0, 0, environment);
        } else if (words.first() == QStringLiteral("remove")) {
            centre.removeScheduledNotification(reminderOf(words.at(1), {}));
        } else if (words.first() == QStringLiteral("kill")) {
            killAtStep(words.at(1).toInt());
        }
    });
    return QCoreApplication::exec();
}
