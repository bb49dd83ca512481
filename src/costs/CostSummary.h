#pragma once

#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// From the other date to the date in months of one twelfth of a year of 365.242199 days; fractional,
/// negative when the date precedes the other.
double calcElapsedMonths(Date date, Date otherDate);

/// What a stored cost adds to a sum. Reads a text after removing the locale's grouping separator
/// and currency symbol, then its leading number with ".". So where "." groups, a stored 12.50 sums as
/// 1250, and a text 12,50 adds 12: kept as it is, and kept apart
/// from the reading that the reports' currency column uses, which removes nothing.
double costOfValue(const Value& value, const Environment& environment);

/// The sum of a cost over all records, each read as above.
double calcTotalCost(const Records& records, std::string_view forKey, const Environment& environment);

/// The total itself for spans under one month (or not a number), else total per month.
double calcAvgCost(double total, double elapsedMonths);

struct DateRange {
    Date earliest;
    Date latest;
};
/// The earliest and latest date under the key; leaves the records sorted by it, earliest first. None
/// when there are no records, or none has a date.
std::optional<DateRange> earliestDate(Records& records, std::string_view usingDateKey, const Environment& environment);

/// A period's total and monthly average.
struct CostFigures {
    double elapsedMonths = 0;
    double total = 0;
    double average = 0;
    DateRange range;
};
/// Over dispense date and cost of the records, which are left sorted by dispense date.
CostFigures costFigures(Records& records, const Environment& environment);

/// "Found 3 qualifying prescriptions with a (earliest/latest)dispense date range of: 1/5/24 to 3/20/24"
std::string costSummaryLine(std::size_t count, const DateRange& range, const Environment& environment,
                            const LocalizedStrings& localized);

}  // namespace kpx
