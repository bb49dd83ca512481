#include "ui/Application.h"
#include "ui/SingleInstance.h"

#include <QApplication>

#include <cstdlib>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Velmora"));
    QApplication::setApplicationVersion(QStringLiteral("1.0"));
    QGuiApplication::setDesktopFileName(QStringLiteral("example.velmora.Velmora"));

    kpx::SingleInstance instance;
    if (!instance.claim()) {
        return EXIT_SUCCESS;
    }
    kpx::Application program;
    instance.activated = [&] { program.raise(); };
    instance.reminderClicked = [&](const kpx::UserNotification& reminder) { program.open(reminder); };
    program.show();
    kpx::QtUserNotificationCenter::wakeAgent();
    return QApplication::exec();
}
