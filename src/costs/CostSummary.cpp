#include "costs/CostSummary.h"

#include "core/Keys.h"
#include "core/Sorting.h"
#include "region/DateConversion.h"
#include "region/DateUtilities.h"
#include "region/Numbers.h"
#include "values/NumberText.h"

namespace kpx {

namespace {

constexpr double secondsPerMonth = 2629743.8328;

}  // namespace

double costOfValue(const Value& value, const Environment& environment) {
    if (const Text* text = value.as<Text>()) {
        return leadingNumber(removingGroupingAndCurrency(*text, environment));
    }
    if (const double* number = value.as<double>()) {
        return *number;
    }
    return static_cast<double>(integerValue(value));
}

double calcElapsedMonths(Date date, Date otherDate) { return date.secondsSince(otherDate) / secondsPerMonth; }

double calcTotalCost(const Records& records, std::string_view forKey, const Environment& environment) {
    double total = 0;
    for (const Record& record : records) {
        if (const Value* value = record.find(forKey)) {
            total += costOfValue(*value, environment);
        }
    }
    return total;
}

double calcAvgCost(double total, double elapsedMonths) { return elapsedMonths >= 1.0 ? total / elapsedMonths : total; }

std::optional<DateRange> earliestDate(Records& records, std::string_view usingDateKey, const Environment& environment) {
    if (records.empty()) {
        return std::nullopt;
    }
    arrayToNSDate(records, usingDateKey, environment);
    sortByDescriptors(records, {{std::string(usingDateKey), true, Comparison::Plain}}, environment);
    const auto first = records.front().date(usingDateKey);
    const auto last = records.back().date(usingDateKey);
    // Always this key, whatever was passed: the only one that this is ever asked for.
    arrayNSDateToString(records, MHDispenseDateKey, environment);
    if (!last) {
        return std::nullopt;
    }
    return DateRange{first.value_or(*last), *last};
}

CostFigures costFigures(Records& records, const Environment& environment) {
    CostFigures figures;
    figures.range = earliestDate(records, MHDispenseDateKey, environment).value_or(DateRange{});
    figures.elapsedMonths = calcElapsedMonths(figures.range.latest, figures.range.earliest);
    figures.total = calcTotalCost(records, MHTotalCostKey, environment);
    figures.average = calcAvgCost(figures.total, figures.elapsedMonths);
    return figures;
}

std::string costSummaryLine(std::size_t count, const DateRange& range, const Environment& environment,
                            const LocalizedStrings& localized) {
    const std::string found = std::to_string(count);
    const std::string earliest = shortStyleFromDate(range.earliest, environment);
    const std::string latest = shortStyleFromDate(range.latest, environment);
    return localized.sentence(
        "Found %ld qualifying prescriptions with a (earliest/latest)dispense date range of: %@ to %@",
        {found, earliest, latest},
        formatted("%@ %ld %@ %@ %@ %@",
                  {localized("Found"), found,
                   localized("qualifying prescriptions with a (earliest/latest)dispense date range of:"), earliest,
                   localized("to"), latest}));
}

}  // namespace kpx
