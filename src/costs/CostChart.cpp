#include "costs/CostChart.h"

#include "core/Keys.h"
#include "region/Collation.h"
#include "region/DateUtilities.h"
#include "region/Numbers.h"
#include "values/FieldFinder.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kpx {

namespace {

constexpr std::size_t mostMonthsWithNames = 36;
constexpr std::size_t mostRows = 8;

/// The costs of the records, each read once for all charts.
std::vector<double> costsOf(const Records& records, const Environment& environment) {
    const FieldFinder costField(MHTotalCostKey);
    std::vector<double> costs;
    costs.reserve(records.size());
    for (const Record& record : records) {
        const Value* cost = costField.in(record);
        costs.push_back(cost ? costOfValue(*cost, environment) : 0);
    }
    return costs;
}

/// 0.1 and 0.2 make 0.3: what adding doubles leaves far below the cent would tell equal sums apart. Nothing is
/// never less than nothing.
double withoutNoise(double sum) {
    constexpr double millionths = 1e6;
    constexpr double largestWithMillionths = 1e9;
    return std::abs(sum) < largestWithMillionths ? std::round(sum * millionths) / millionths + 0.0 : sum;
}

ChartBar bar(std::string label, double sum, const Environment& environment) {
    const double amount = withoutNoise(sum);
    return {std::move(label), amount, formatCurrency(amount, environment), {}};
}

/// The first moments of the calendar months that the range touches.
std::vector<Date> monthsOf(const DateRange& range, const Environment& environment) {
    const int day = yearMonthDayFromDate(range.earliest, environment).day;
    Date month = cleanseDate(dateByAddingDays(range.earliest, 1 - day, 0, 0, environment), environment);
    std::vector<Date> months{month};
    for (;;) {
        const Date next = cleanseDate(dateByAddingDays(month, 0, 1, 0, environment), environment);
        // At the end of all calendars there is no next month.
        if (next > range.latest || next <= month) {
            return months;
        }
        months.push_back(month = next);
    }
}

std::vector<ChartBar> barsByMonth(const Records& records, const std::vector<double>& costs, const DateRange& range,
                                  const Environment& environment) {
    const std::vector<Date> months = monthsOf(range, environment);
    std::vector<double> sums(months.size(), 0);
    const FieldFinder dispensed(MHDispenseDateKey);
    for (std::size_t index = 0; index < records.size(); ++index) {
        const Text* text = dispensed.textIn(records[index]);
        const Date date = text ? dateFromYYMMDDStr(text->view(), environment) : range.earliest;
        const auto after = std::ranges::upper_bound(months, date);
        sums[static_cast<std::size_t>(std::max<std::ptrdiff_t>(after - months.begin() - 1, 0))] += costs[index];
    }
    std::vector<ChartBar> bars;
    bars.reserve(months.size());
    for (std::size_t index = 0; index < months.size(); ++index) {
        bars.push_back(bar(monthAndYearFromDate(months[index], environment), sums[index], environment));
        ChartBar& added = bars.back();
        if (months.size() <= mostMonthsWithNames) {
            added.axisLabel = added.label;
        } else if (yearMonthDayFromDate(months[index], environment).month == 1) {
            added.axisLabel = yearFromDate(months[index], environment);
        }
    }
    return bars;
}

struct NamedSum {
    std::string name;
    double sum = 0;
};

/// Largest first, what is no number last, equal ones by name.
bool standsBefore(const NamedSum& left, const NamedSum& right, const Environment& environment) {
    const bool leftIsNone = std::isnan(left.sum);
    const bool rightIsNone = std::isnan(right.sum);
    if (leftIsNone != rightIsNone) {
        return rightIsNone;
    }
    if (!leftIsNone && left.sum != right.sum) {
        return left.sum > right.sum;
    }
    return compareTexts(left.name, right.name, Comparison::LocalizedStandard, environment) < 0;
}

std::vector<NamedSum> sumsByName(const Records& records, const std::vector<double>& costs, const char* key) {
    const FieldFinder nameField(key);
    std::unordered_map<std::string, double> sums;
    for (std::size_t index = 0; index < records.size(); ++index) {
        sums[textOfValue(nameField.in(records[index])).value_or(Text()).string()] += costs[index];
    }
    std::vector<NamedSum> named;
    named.reserve(sums.size());
    for (const auto& [name, sum] : sums) {
        named.push_back({name, withoutNoise(sum)});
    }
    return named;
}

std::vector<ChartBar> barsByName(std::vector<NamedSum> sums, const Environment& environment,
                                 const LocalizedStrings& localized) {
    // Those behind are only counted, and telling thousands of names in order takes its time.
    std::ranges::partial_sort(
        sums, sums.begin() + static_cast<std::ptrdiff_t>(std::min(sums.size(), mostRows)),
        [&](const NamedSum& left, const NamedSum& right) { return standsBefore(left, right, environment); });
    if (sums.size() > mostRows) {
        const auto rest = sums.begin() + (mostRows - 1);
        const double others =
            std::accumulate(rest, sums.end(), 0.0, [](double sum, const NamedSum& other) { return sum + other.sum; });
        sums.erase(rest, sums.end());
        sums.push_back({localized("All Others"), others});
    }
    std::vector<ChartBar> bars;
    for (const NamedSum& named : sums) {
        bars.push_back(bar(named.name, named.sum, environment));
        bars.back().axisLabel = named.name;
    }
    return bars;
}

/// Round amounts round the bars and the average; cents only where the steps are finer than whole amounts.
std::vector<ChartMark> axisFor(const Chart& chart, const Environment& environment) {
    double lowest = 0;
    double highest = 0;
    const auto include = [&](double amount) {
        lowest = std::min(lowest, amount);
        highest = std::max(highest, amount);
    };
    for (const ChartBar& counted : chart.bars) {
        include(counted.amount);
    }
    if (chart.average) {
        include(chart.average->amount);
    }
    const std::vector<double> marks = roundMarks(lowest, highest);
    const bool whole = marks[1] - marks[0] >= 1;
    std::vector<ChartMark> axis;
    axis.reserve(marks.size());
    for (const double mark : marks) {
        axis.push_back({mark, whole ? copyFormatStringForTextField(mark, "\u00A4###,###,##0", environment)
                                    : formatCurrency(mark, environment)});
    }
    return axis;
}

/// A breakdown's texts, in English, and the key of its names; months have none.
struct BreakdownTexts {
    const char* title;
    const char* chartTitle;
    const char* labelTitle;
    const char* key;
};

const BreakdownTexts& textsOf(CostBreakdown breakdown) {
    static constexpr std::array<BreakdownTexts, costBreakdowns.size()> texts{{
        {localizable("By Month"), localizable("Cost by Month"), localizable("Month"), nullptr},
        {localizable("By Drug"), localizable("Cost by Drug"), localizable("Drug Name"), MHDrugKey},
        {localizable("By Patient"), localizable("Cost by Patient"), localizable("Patient"), MHPatientKey},
        {localizable("By Pharmacy"), localizable("Cost by Pharmacy"), localizable("Pharmacy"), MHPharmacyKey},
    }};
    return texts[static_cast<std::size_t>(breakdown)];
}

}  // namespace

const char* costBreakdownTitle(CostBreakdown breakdown) { return textsOf(breakdown).title; }

CostCharts costCharts(const Records& records, const CostFigures& figures, const Environment& environment,
                      const LocalizedStrings& localized) {
    const std::vector<double> costs = costsOf(records, environment);
    CostCharts charts;
    for (const CostBreakdown breakdown : costBreakdowns) {
        const BreakdownTexts& texts = textsOf(breakdown);
        Chart& chart = charts[static_cast<std::size_t>(breakdown)];
        chart.title = localized(texts.chartTitle);
        chart.labelTitle = localized(texts.labelTitle);
        chart.amountTitle = localized("Cost");
        if (breakdown == CostBreakdown::ByMonth) {
            chart.bars = barsByMonth(records, costs, figures.range, environment);
            const std::string average = formatCurrency(figures.average, environment);
            chart.average =
                ChartMark{figures.average, localized.sentence("Average Monthly Cost: %@", {average},
                                                              localized("Average Monthly Cost") + ": " + average)};
        } else {
            chart.shape = Chart::Shape::Rows;
            chart.bars = barsByName(sumsByName(records, costs, texts.key), environment, localized);
        }
        chart.axis = axisFor(chart, environment);
    }
    return charts;
}

}  // namespace kpx
