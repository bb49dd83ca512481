#pragma once

#include "reminders/Schedule.h"

#include <chrono>
#include <functional>
#include <optional>

namespace kpx {

/// All that the agent knows of time.
class AgentClock {
public:
    virtual ~AgentClock() = default;

    /// What the wall clock shows, in the time zone the machine is set to at this moment.
    virtual LocalTime localTime() = 0;
    /// The time since some moment, by a clock that nobody sets and that counts while the machine sleeps.
    virtual std::chrono::seconds elapsed() = 0;

    /// `woken` is to be called at 08:00 of the day, and whenever the answer to "what time is it?" may have jumped:
    /// after a clock step, a resume, a change of the machine's time zone. Replaces the earlier setting; without a
    /// day a jump of the clock need not wake either.
    virtual void wakeAt(std::optional<LocalDay> day) = 0;
    std::function<void()> woken;

    /// Runs the call later, once; there may be several.
    virtual void callAfter(std::chrono::milliseconds pause, std::function<void()> call) = 0;
};

}  // namespace kpx
