#include "tests/support/ClockDouble.h"

#include <algorithm>
#include <utility>

namespace kpx::test {

void ClockDouble::callAfter(double seconds, std::function<void()> call) {
    m_timers.push_back({m_now.addingSeconds(seconds), std::move(call)});
}

std::vector<ClockDouble::Timer>::iterator ClockDouble::earliestTimer() {
    // The first of equals: calls made at one instant run in the order in which they were asked for.
    return std::ranges::min_element(m_timers, {}, &Timer::due);
}

void ClockDouble::moveTo(Date instant) {
    if (instant < m_now) {
        const double back = instant.secondsSince(m_now);
        for (Timer& timer : m_timers) {
            timer.due = timer.due.addingSeconds(back);
        }
        m_now = instant;
    }
    while (true) {
        const auto timer = earliestTimer();
        const bool timerIsDue = timer != m_timers.end() && timer->due <= instant;
        const std::optional<Date> scheduled = m_scheduled ? m_scheduled->nextDue() : std::nullopt;
        const bool scheduledIsDue = scheduled && *scheduled <= instant;
        if (timerIsDue && (!scheduledIsDue || timer->due <= *scheduled)) {
            m_now = std::max(m_now, timer->due);
            const std::function<void()> call = std::move(timer->call);
            m_timers.erase(timer);
            call();
        } else if (scheduledIsDue) {
            m_now = std::max(m_now, *scheduled);
            m_scheduled->wake(*scheduled);
        } else {
            break;
        }
    }
    m_now = instant;
}

}  // namespace kpx::test
