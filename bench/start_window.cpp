// bench_start_window [RECORDS]: from the program's start to its first painted window, and to a window that
// is ready to use, on a made household of 10,000 fills; prints the largest parts, and the processor's share of each.
// Wants a display, or QT_QPA_PLATFORM=offscreen.

#include "bench/HouseholdFolder.h"
#include "ui/Application.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <utility>

namespace {

/// Of the program and of the kernel on its behalf, in milliseconds: no other program's work is in it.
double processorTime() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
}

class Stages {
public:
    /// From the process's start, but without what was done for the measuring.
    explicit Stages(double processorTimeBefore) : m_processorTime(processorTimeBefore) { m_timer.start(); }
    void reached(const char* stage) {
        const double now = static_cast<double>(m_timer.nsecsElapsed()) / 1e6;
        std::printf("%8.1f ms  (+%6.1f)  processor %8.1f ms  %s\n", now, now - m_last,
                    processorTime() - m_processorTime, stage);
        m_last = now;
    }

private:
    QElapsedTimer m_timer;
    double m_processorTime;
    double m_last = 0;
};

/// Says so once the window is painted, and before the program, which waits for the same, goes on.
class FirstPaint : public QObject {
public:
    explicit FirstPaint(std::function<void()> painted) : m_painted(std::move(painted)) {}

protected:
    bool eventFilter(QObject* window, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            window->removeEventFilter(this);
            QMetaObject::invokeMethod(this, m_painted, Qt::QueuedConnection);
        }
        return false;
    }

private:
    std::function<void()> m_painted;
};

}  // namespace

int main(int argc, char** argv) {
    constexpr std::size_t usualRecords = 10000;
    const std::size_t records = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : usualRecords;
    const double loaded = processorTime();
    const kpx::bench::HouseholdFolder household(records);
    qputenv("XDG_DATA_HOME", household.dataHome().c_str());
    qputenv("XDG_CONFIG_HOME", (household.dataHome() / "config").c_str());

    Stages stages(processorTime() - loaded);
    QApplication application(argc, argv);
    stages.reached("toolkit");
    kpx::Application program;
    stages.reached("ports, controller, windows from their forms, binding");
    FirstPaint firstPaint([&] { stages.reached("first painted window"); });
    program.window().installEventFilter(&firstPaint);
    QObject::connect(&program.window(), &kpx::MainWindow::firstPainted, &application, [&] {
        QTimer::singleShot(0, &application, [&] { stages.reached("start-up sequence: files read, rows, pop-ups"); });
        QTimer::singleShot(1, &application, &QCoreApplication::quit);
    });
    program.show();
    return QApplication::exec();
}
