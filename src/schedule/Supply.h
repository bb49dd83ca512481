#pragma once

#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kpx {

/// The column of the schedule that shows how much of the supply is left.
inline constexpr char supplyColumn[] = "nextdate";

/// What is left of a fill today.
struct Supply {
    std::int64_t days = 0;  ///< how long the fill lasts
    std::int64_t left = 0;  ///< 0 on the day of the next fill, negative after it
    bool operator==(const Supply&) const = default;
};

/// Of a tab-2 row: the calendar days from today to the day of its next fill as the row shows it, never more
/// than the supply. None for a row without both dates.
std::optional<Supply> supplyOfRow(const Record& row, const Environment& environment);

/// "12 of 30 days left"; nothing is left of a supply that ran out.
std::string supplyText(const Supply& supply, const LocalizedStrings& localized);

}  // namespace kpx
