// bench_start_window [RECORDS]: from the program's start to its first painted window, and to a window that
// is ready to use, on a made household of 10,000 fills; prints the largest parts. Wants a display, or
// QT_QPA_PLATFORM=offscreen.

#include "bench/HouseholdFolder.h"
#include "ui/Application.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

class Stages {
public:
    Stages() { m_timer.start(); }
    void reached(const char* stage) {
        const double now = static_cast<double>(m_timer.nsecsElapsed()) / 1e6;
        std::printf("%8.1f ms  (+%6.1f)  %s\n", now, now - m_last, stage);
        m_last = now;
    }

private:
    QElapsedTimer m_timer;
    double m_last = 0;
};

}  // namespace

int main(int argc, char** argv) {
    constexpr std::size_t usualRecords = 10000;
    const std::size_t records = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : usualRecords;
    const kpx::bench::HouseholdFolder household(records);
    qputenv("XDG_DATA_HOME", household.dataHome().c_str());
    qputenv("XDG_CONFIG_HOME", (household.dataHome() / "config").c_str());

    Stages stages;
    QApplication application(argc, argv);
    stages.reached("toolkit");
    kpx::Application program;
    stages.reached("ports, controller, windows from their forms, binding");
    QObject::connect(&program.window(), &kpx::MainWindow::firstPainted, &application, [&] {
        stages.reached("first painted window");
        QTimer::singleShot(0, &application, [&] { stages.reached("start-up sequence: files read, rows, pop-ups"); });
        QTimer::singleShot(1, &application, &QCoreApplication::quit);
    });
    program.show();
    return QApplication::exec();
}
