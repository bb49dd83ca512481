#include "ui/ports/QtClock.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace kpx {

Date QtClock::now() {
    const std::chrono::duration<double> seconds = std::chrono::system_clock::now().time_since_epoch();
    return Date::fromSecondsSince1970(seconds.count());
}

void QtClock::callAfter(double seconds, std::function<void()> call) {
    QTimer::singleShot(static_cast<int>(seconds * 1000), &m_pending, std::move(call));
}

}  // namespace kpx
