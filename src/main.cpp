#include "ui/Application.h"
#include "ui/SingleInstance.h"

#include <QApplication>

#include <cstdlib>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Velmora"));
    QApplication::setApplicationVersion(QStringLiteral(KPX_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("example.velmora.Velmora"));

    const bool scheduleIsWanted = QApplication::arguments().contains(QStringLiteral("--schedule"));
    kpx::SingleInstance instance;
    if (!instance.claim(scheduleIsWanted)) {
        return EXIT_SUCCESS;
    }
    kpx::Application program;
    if (!program.delegate().claimDataFolder()) {
        instance.release();  // while the message stands nobody here could do what is asked of that name
        program.delegate().dataFolderInUseMsg();
        return EXIT_SUCCESS;
    }
    instance.activated = [&] { program.raise(); };
    instance.reminderClicked = [&](const kpx::UserNotification& reminder) { program.open(reminder); };
    instance.reminderToBeShown = [&](const kpx::UserNotification& reminder) { program.showReminder(reminder); };
    instance.scheduleWanted = [&] { program.showSchedule(); };
    if (scheduleIsWanted) {
        program.showSchedule();
    }
    program.show();
    kpx::QtUserNotificationCenter::startAgentIfNeeded();
    const int status = QApplication::exec();
    instance.release();
    return status;
}
