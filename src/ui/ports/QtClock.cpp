#include "ui/ports/QtClock.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>

namespace kpx {

Date QtClock::now() {
    const std::chrono::duration<double> seconds = std::chrono::system_clock::now().time_since_epoch();
    return Date::fromSecondsSince1970(seconds.count());
}

void QtClock::callAfter(double seconds, std::function<void()> call) {
    // The application as context: what is still pending when it ends is dropped.
    QTimer::singleShot(static_cast<int>(seconds * 1000), qApp, std::move(call));
}

}  // namespace kpx
