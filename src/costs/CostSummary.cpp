#include "costs/CostSummary.h"

#include "core/DateConversion.h"
#include "core/DateUtilities.h"
#include "core/Keys.h"
#include "core/Numbers.h"
#include "core/Sorting.h"

namespace kpx {

namespace {

constexpr double secondsPerMonth = 2629743.8328;

double costOf(const Value& value, const Environment& environment) {
    if (const Text* text = value.as<Text>()) {
        return leadingNumber(removingGroupingAndCurrency(*text, environment));
    }
    if (const double* number = value.as<double>()) {
        return *number;
    }
    return static_cast<double>(integerValue(value));
}

}  // namespace

double calcElapsedMonths(Date date, Date otherDate) { return date.secondsSince(otherDate) / secondsPerMonth; }

double calcTotalCost(const Records& records, std::string_view forKey, const Environment& environment) {
    double total = 0;
    for (const Record& record : records) {
        if (const Value* value = record.find(forKey)) {
            total += costOf(*value, environment);
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
    return localized("Found") + formatted(" %ld ", {std::to_string(count)}) +
           localized("qualifying prescriptions with a (earliest/latest)dispense date range of:") +
           formatted(" %@ ", {shortStyleFromDate(range.earliest, environment)}) + localized("to") +
           formatted(" %@", {shortStyleFromDate(range.latest, environment)});
}

}  // namespace kpx
