#pragma once

#include "reminders/Schedule.h"

#include <chrono>
#include <optional>

namespace kpx {

// When a notification server that took a reminder not is asked again.

/// After so many tries that found no server at all, the window program shows the reminder itself.
inline constexpr int triesBeforeAWindow = 3;

/// The failed tries of one reminder on one day.
struct Tries {
    int count = 0;
    /// How many of the last ones in a row found no server.
    int withoutServer = 0;
    LocalDay dueDay;       ///< for which it was tried
    LocalDay calendarDay;  ///< on which it was tried
    /// By a clock that nobody sets, as is the `elapsed` below.
    std::chrono::seconds last{0};
};

enum class Failure {
    Refused,   ///< or no answer in time
    NoServer,  ///< there is none, and none can be started
};

/// The tries after one more has failed. A new day counts anew.
Tries afterFailure(const std::optional<Tries>& before, Failure failure, LocalTime now, std::chrono::seconds elapsed);

/// How long until the next try; zero or less when it is its turn, none when this day is over: the next 08:00 brings
/// the next.
std::optional<std::chrono::seconds> timeToNextTry(const std::optional<Tries>& tries, LocalTime now,
                                                  std::chrono::seconds elapsed);

}  // namespace kpx
