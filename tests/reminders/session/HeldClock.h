#pragma once

#include "agent/AgentClock.h"

#include <map>

namespace kpx {

/// Time that moves only when a test moves it.
class HeldClock : public AgentClock {
public:
    explicit HeldClock(LocalTime now) : m_now(now) {
        woken = [] {};
    }

    LocalTime localTime() override { return m_now; }
    std::chrono::seconds elapsed() override { return m_elapsed; }
    void wakeAt(std::optional<LocalDay> day) override { m_wakeAt = day; }
    void callAfter(std::chrono::milliseconds pause, std::function<void()> call) override {
        m_calls.emplace(std::chrono::ceil<std::chrono::seconds>(pause) + m_elapsed, std::move(call));
    }

    /// Lets time pass; what becomes due on the way happens when it is due.
    void pass(std::chrono::seconds time);
    /// Moves to the next thing that is due, or by that time; answers how far.
    std::chrono::seconds passToNext(std::chrono::seconds atMost);
    /// Does one thing that is due now; false when there is none.
    bool doNext();
    std::size_t callsToCome() const { return m_calls.size(); }
    /// As a user sets the wall clock, or a journey does.
    void set(LocalTime now) {
        m_now = now;
        woken();
    }

private:
    void move(std::chrono::seconds time);
    std::chrono::seconds untilNext(std::chrono::seconds atMost) const;

    LocalTime m_now;
    std::chrono::seconds m_elapsed{0};
    std::optional<LocalDay> m_wakeAt;
    std::multimap<std::chrono::seconds, std::function<void()>> m_calls;
};

}  // namespace kpx
