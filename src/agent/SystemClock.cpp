#include "agent/SystemClock.h"

#include <QStringList>
#include <QTimer>

#include <sys/timerfd.h>
#include <unistd.h>

#include <ctime>
#include <utility>

namespace kpx {

namespace {

/// The instant of 08:00 of that day; on a day whose clock change skips it, as much later as the clock jumps.
std::time_t instantOf(LocalDay day) {
    const std::chrono::year_month_day date(day);
    std::tm parts{};
    parts.tm_year = static_cast<int>(date.year()) - 1900;
    parts.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
    parts.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
    parts.tm_hour = static_cast<int>(deliveryTime.count());
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

}  // namespace

LocalTime SystemClock::localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::tzset();  // localtime_r does not look whether the machine's time zone was changed
    ::localtime_r(&now, &parts);
    const std::chrono::year_month_day date{std::chrono::year(parts.tm_year + 1900),
                                           std::chrono::month(static_cast<unsigned>(parts.tm_mon + 1)),
                                           std::chrono::day(static_cast<unsigned>(parts.tm_mday))};
    return {LocalDay(date), std::chrono::hours(parts.tm_hour) + std::chrono::minutes(parts.tm_min) +
                                std::chrono::seconds(parts.tm_sec)};
}

std::chrono::seconds SystemClock::elapsed() {
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::seconds(now.tv_sec);
}

SystemClock::SystemClock()
    : m_timer(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)),
      m_notifier(m_timer.get(), QSocketNotifier::Read) {
    QObject::connect(&m_notifier, &QSocketNotifier::activated, [this] {
        std::uint64_t expirations = 0;
        // Fails with ECANCELED after a clock step or a resume: as good a reason to wake as any.
        [[maybe_unused]] const ssize_t length = ::read(m_timer.get(), &expirations, sizeof expirations);
        woken();
    });
    // /etc/localtime is replaced as a whole, so that only its folder sees it.
    m_timeZone.addPath(QStringLiteral("/etc"));
    QObject::connect(&m_timeZone, &QFileSystemWatcher::directoryChanged, [this] { woken(); });
}

void SystemClock::wakeAt(std::optional<LocalDay> day) {
    itimerspec setting{};
    setting.it_value.tv_sec = day ? instantOf(*day) : 0;
    ::timerfd_settime(m_timer.get(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &setting, nullptr);
}

void SystemClock::callAfter(std::chrono::milliseconds pause, std::function<void()> call) {
    QTimer::singleShot(pause, &m_pending, std::move(call));
}

}  // namespace kpx
