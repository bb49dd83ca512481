#pragma once

#include "region/Environment.h"

#include <chrono>
#include <string_view>

namespace kpx {

/// An instant by its universal time, computed without the code under test.
inline Date universal(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    const std::chrono::sys_days days = std::chrono::year(year) / month / day;
    const double seconds = static_cast<double>(days.time_since_epoch().count()) * 86400.0;
    return Date::fromSecondsSince1970(seconds + hour * 3600.0 + minute * 60.0 + second);
}

/// Noon of 5 March 2024 in universal time.
inline Environment environmentFor(std::string_view locale, std::string_view timeZone = "UTC") {
    return {universal(2024, 3, 5, 12), Region(locale, timeZone)};
}

}  // namespace kpx
