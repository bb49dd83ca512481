#include "ui/Application.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Velmora"));
    QApplication::setApplicationVersion(QStringLiteral("1.0"));
    QGuiApplication::setDesktopFileName(QStringLiteral("velmora"));

    kpx::Application program;
    program.show();
    return QApplication::exec();
}
