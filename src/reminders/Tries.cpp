#include "reminders/Tries.h"

#include <algorithm>
#include <array>

namespace kpx {

namespace {

/// `tries` counts from 1; the last pause is that of all further ones.
std::chrono::minutes pauseAfterTry(int tries) {
    constexpr std::array pauses = {1, 2, 5, 10, 15};
    const int last = static_cast<int>(pauses.size()) - 1;
    return std::chrono::minutes(pauses.at(static_cast<std::size_t>(std::clamp(tries - 1, 0, last))));
}

}  // namespace

Tries afterFailure(const std::optional<Tries>& before, Failure failure, LocalTime now, std::chrono::seconds elapsed) {
    Tries tries{.count = 0, .withoutServer = 0, .dueDay = lastDueDay(now), .calendarDay = now.day, .last = elapsed};
    if (before && before->dueDay == tries.dueDay) {
        tries = *before;
        tries.last = elapsed;
    }
    ++tries.count;
    tries.withoutServer = failure == Failure::NoServer ? tries.withoutServer + 1 : 0;
    return tries;
}

std::optional<std::chrono::seconds> timeToNextTry(const std::optional<Tries>& tries, LocalTime now,
                                                  std::chrono::seconds elapsed) {
    if (!tries || tries->dueDay != lastDueDay(now)) {
        return std::chrono::seconds(0);
    }
    if (tries->calendarDay != now.day) {
        return std::nullopt;
    }
    return tries->last + pauseAfterTry(tries->count) - elapsed;
}

}  // namespace kpx
