#include "schedule/Supply.h"

#include "region/DateUtilities.h"

#include <algorithm>
#include <cmath>

namespace kpx {

std::optional<Supply> supplyOfRow(const Record& row, const Environment& environment) {
    const auto last = row.date("lastdate");
    const auto next = row.date(supplyColumn);
    if (!last || !next) {
        return std::nullopt;
    }
    // The next fill lies a plain interval of whole days after the last one, so the interval tells the supply.
    constexpr double secondsPerDay = 86400;
    const std::int64_t days = std::llround(next->secondsSince(*last) / secondsPerDay);
    return Supply{days, std::min<std::int64_t>(days, daysBetweenDate(environment.now, *next, environment))};
}

std::string supplyText(const Supply& supply, const LocalizedStrings& localized) {
    return formatted(localized("%@ of %@ days left"), {std::to_string(std::max<std::int64_t>(supply.left, 0)),
                                                       std::to_string(std::max<std::int64_t>(supply.days, 0))});
}

}  // namespace kpx
