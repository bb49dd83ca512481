#include "tests/reminders/session/HeldClock.h"

#include <algorithm>
#include <utility>

namespace kpx {

void HeldClock::move(std::chrono::seconds time) {
    constexpr std::chrono::days day{1};
    m_elapsed += time;
    m_now.timeOfDay += time;
    while (m_now.timeOfDay >= day) {
        m_now.timeOfDay -= day;
        m_now.day += day;
    }
}

std::chrono::seconds HeldClock::untilNext(std::chrono::seconds atMost) const {
    std::chrono::seconds next = atMost;
    if (!m_calls.empty()) {
        next = std::min(next, std::max(m_calls.begin()->first - m_elapsed, std::chrono::seconds(0)));
    }
    if (m_wakeAt) {
        const std::chrono::seconds wait = (*m_wakeAt - m_now.day) + deliveryTime - m_now.timeOfDay;
        next = std::min(next, std::max(wait, std::chrono::seconds(0)));
    }
    return next;
}

std::chrono::seconds HeldClock::passToNext(std::chrono::seconds atMost) {
    const std::chrono::seconds step = untilNext(atMost);
    move(step);
    return step;
}

bool HeldClock::doNext() {
    if (m_wakeAt && (m_now.day > *m_wakeAt || (m_now.day == *m_wakeAt && m_now.timeOfDay >= deliveryTime))) {
        m_wakeAt.reset();
        woken();
        return true;
    }
    if (m_calls.empty() || m_calls.begin()->first > m_elapsed) {
        return false;
    }
    const auto call = std::exchange(m_calls.begin()->second, nullptr);
    m_calls.erase(m_calls.begin());
    call();
    return true;
}

void HeldClock::pass(std::chrono::seconds time) {
    for (bool isDone = false; !isDone;) {
        time -= passToNext(time);
        isDone = !doNext() && time == std::chrono::seconds(0);
    }
}

}  // namespace kpx
