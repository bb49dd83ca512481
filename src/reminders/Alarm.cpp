#include "reminders/Alarm.h"

#include <QStringList>

#include <sys/timerfd.h>
#include <unistd.h>

#include <ctime>

namespace kpx {

namespace {

/// The instant of 08:00 of that day; on a day whose clock change skips it, as much later as the clock jumps.
std::time_t instantOf(Day day) {
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

LocalTime localTimeNow() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::tzset();  // localtime_r does not look whether the machine's time zone was changed
    ::localtime_r(&now, &parts);
    const std::chrono::year_month_day date{std::chrono::year(parts.tm_year + 1900),
                                           std::chrono::month(static_cast<unsigned>(parts.tm_mon + 1)),
                                           std::chrono::day(static_cast<unsigned>(parts.tm_mday))};
    return {Day(date), std::chrono::hours(parts.tm_hour) + std::chrono::minutes(parts.tm_min) +
                           std::chrono::seconds(parts.tm_sec)};
}

Alarm::Alarm(std::function<void()> wake)
    : m_timer(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)),
      m_notifier(m_timer.get(), QSocketNotifier::Read) {
    QObject::connect(&m_notifier, &QSocketNotifier::activated, [this, wake] {
        std::uint64_t expirations = 0;
        // Fails with ECANCELED after a clock step or a resume: as good a reason to wake as any.
        static_cast<void>(::read(m_timer.get(), &expirations, sizeof expirations));
        wake();
    });
    // /etc/localtime is replaced as a whole, so that only its folder sees it.
    m_timeZone.addPath(QStringLiteral("/etc"));
    QObject::connect(&m_timeZone, &QFileSystemWatcher::directoryChanged, wake);
}

void Alarm::set(std::optional<Day> day) {
    itimerspec setting{};
    setting.it_value.tv_sec = day ? instantOf(*day) : 0;
    ::timerfd_settime(m_timer.get(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &setting, nullptr);
}

}  // namespace kpx
