#pragma once

#include "app/Ports.h"

#include <functional>
#include <optional>
#include <vector>

namespace kpx::test {

/// Something else that happens at certain instants.
class Scheduled {
public:
    virtual ~Scheduled() = default;
    /// The next instant at which something is due.
    virtual std::optional<Date> nextDue() const = 0;
    /// Does what is due at that instant, after which nextDue() lies later.
    virtual void wake(Date now) = 0;
};

/// Time that moves only when a test moves it.
class ClockDouble : public Clock {
public:
    explicit ClockDouble(Date now) : m_now(now) {}

    Date now() override { return m_now; }
    void callAfter(double seconds, std::function<void()> call) override;

    /// Moves to the instant. On the way forward every timer and everything scheduled happens in the
    /// order in which it is due, each with the clock at its own instant. On the way back timers keep
    /// the time they still had to wait, as they count elapsed time.
    void moveTo(Date instant);
    /// Runs what is due now, calls without delay included, those that they make in turn too.
    void runDue() { moveTo(m_now); }
    /// Nothing further happens.
    void stop() { m_timers.clear(), m_scheduled = nullptr; }

    /// Takes part in moveTo(); outlives the clock's use.
    void setScheduled(Scheduled& scheduled) { m_scheduled = &scheduled; }

private:
    struct Timer {
        Date due;
        std::function<void()> call;
    };
    std::vector<Timer>::iterator earliestTimer();

    Date m_now;
    std::vector<Timer> m_timers;
    Scheduled* m_scheduled = nullptr;
};

}  // namespace kpx::test
