#include "core/Keys.h"
#include "costs/CostChart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace kpx {
namespace {

Environment in(const char* locale, const char* zone = "America/New_York") { return {{}, Region(locale, zone)}; }

Record fill(const char* date, const char* cost, const char* drug = "Aspirin") {
    return Record{{MHPatientKey, "Ann"}, {MHDrugKey, drug}, {MHDispenseDateKey, date}, {MHTotalCostKey, cost}};
}

Chart chartOf(Records records, CostBreakdown breakdown, const Environment& here) {
    const CostFigures figures = costFigures(records, here);
    return costCharts(records, figures, here, {})[static_cast<std::size_t>(breakdown)];
}

using Bars = std::vector<std::pair<std::string, double>>;

Bars barsOf(const Chart& chart) {
    Bars bars;
    for (const ChartBar& bar : chart.bars) {
        bars.emplace_back(bar.label, bar.amount);
    }
    return bars;
}

TEST(CostChart, EveryCalendarMonthHasABar) {
    struct Row {
        const char* what;
        const char* locale;
        const char* zone;
        Records records;
        Bars bars;
    };
    const std::vector<Row> rows = {
        {"one fill", "en_US", "UTC", {fill("20261115", "12.50")}, {{"Nov 2026", 12.5}}},
        {"the ends of a month", "en_US", "UTC", {fill("20240201", "1"), fill("20240229", "2")}, {{"Feb 2024", 3}}},
        {"neighbouring days",
         "en_US",
         "UTC",
         {fill("20240131", "1"), fill("20240201", "2")},
         {{"Jan 2024", 1}, {"Feb 2024", 2}}},
        {"an empty month over New Year",
         "en_US",
         "UTC",
         {fill("20240131", "1"), fill("20231130", "2")},
         {{"Nov 2023", 2}, {"Dec 2023", 0}, {"Jan 2024", 1}}},
        {"fills on the last days",
         "en_US",
         "UTC",
         {fill("20240131", "1"), fill("20240331", "2")},
         {{"Jan 2024", 1}, {"Feb 2024", 0}, {"Mar 2024", 2}}},
        {"a first day that begins at one o'clock",
         "en_US",
         "America/Asuncion",
         {fill("20230901", "1"), fill("20231001", "2"), fill("20231101", "4")},
         {{"Sep 2023", 1}, {"Oct 2023", 2}, {"Nov 2023", 4}}},
        {"a negative cost", "en_US", "UTC", {fill("20240101", "-5.00")}, {{"Jan 2024", -5}}},
        {"the order of the file",
         "en_US",
         "UTC",
         {fill("20240301", "3"), fill("20240101", "1"), fill("20240201", "2")},
         {{"Jan 2024", 1}, {"Feb 2024", 2}, {"Mar 2024", 3}}},
        {"the region's way", "ja_JP", "Asia/Tokyo", {fill("20261115", "7")}, {{"2026年11月", 7}}},
        {"the region's calendar", "th_TH@calendar=buddhist", "UTC", {fill("26690115", "7")}, {{"ม.ค. 2669", 7}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(barsOf(chartOf(row.records, CostBreakdown::ByMonth, in(row.locale, row.zone))), row.bars);
    }
}

TEST(CostChart, ReadsCostsAsTheTotalDoes) {
    struct Row {
        const char* locale;
        const char* stored;
        double amount;
    };
    const std::vector<Row> rows = {{"en_US", "$1,234.50", 1234.5}, {"en_US", "free", 0}, {"de_DE", "12.50", 1250},
                                   {"de_DE", "12,50", 12},         {"en_US", "", 0},     {"en_US", ".5", 0.5}};
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.locale) + " " + row.stored);
        for (const CostBreakdown breakdown : costBreakdowns) {
            EXPECT_EQ(chartOf({fill("20240101", row.stored)}, breakdown, in(row.locale)).bars.at(0).amount, row.amount);
        }
    }
    const Environment here = in("en_US");
    EXPECT_EQ(chartOf({Record{{MHDispenseDateKey, "20240101"}, {MHTotalCostKey, 12}}}, CostBreakdown::ByDrug, here)
                  .bars.at(0)
                  .amount,
              12);
    EXPECT_EQ(chartOf({Record{{MHDispenseDateKey, "20240101"}}}, CostBreakdown::ByMonth, here).bars.at(0).amount, 0);
}

TEST(CostChart, TheBarsOfEachChartAddUpToTheTotal) {
    const Environment here = in("en_US");
    std::mt19937 random(1);
    for (int round = 0; round < 4; ++round) {
        Records records;
        for (int count = 0; count < 500; ++count) {
            const std::string month = std::to_string(10 + random() % 3);
            const std::string cents = std::to_string(random() % 100);
            const std::string cost = std::to_string(random() % 1000) + (cents.size() < 2 ? ".0" : ".") + cents;
            records.push_back(Record{{MHPatientKey, "P" + std::to_string(random() % 5)},
                                     {MHDrugKey, "D" + std::to_string(random() % 40)},
                                     {MHPharmacyKey, "S" + std::to_string(random() % 9)},
                                     {MHDispenseDateKey, "20" + month + month + std::to_string(10 + random() % 19)},
                                     {MHTotalCostKey, cost}});
        }
        const CostFigures figures = costFigures(records, here);
        for (const Chart& chart : costCharts(records, figures, here, {})) {
            double sum = 0;
            for (const ChartBar& bar : chart.bars) {
                sum += bar.amount;
            }
            EXPECT_EQ(std::round(sum * 100), std::round(figures.total * 100));
        }
    }
}

TEST(CostChart, RowsStandLargestFirst) {
    const Environment here = in("en_US");
    const auto drugs = [](std::initializer_list<std::pair<const char*, const char*>> costs) {
        Records records;
        for (const auto& [drug, cost] : costs) {
            records.push_back(fill("20240101", cost, drug));
        }
        return records;
    };
    struct Row {
        const char* what;
        Records records;
        Bars bars;
    };
    const std::vector<Row> rows = {
        {"sums", drugs({{"A", "1"}, {"B", "2"}, {"A", "3"}}), {{"A", 4}, {"B", 2}}},
        {"equal ones by name",
         drugs({{"b", "1"}, {"D 10", "1"}, {"D 9", "1"}, {"A", "1"}}),
         {{"A", 1}, {"b", 1}, {"D 9", 1}, {"D 10", 1}}},
        {"equal but for noise", drugs({{"B", "0.30"}, {"A", "0.10"}, {"A", "0.20"}}), {{"A", 0.3}, {"B", 0.3}}},
        {"case and accents make a difference",
         drugs({{"zinc", "1"}, {"Zinc", "2"}, {"Zínc", "3"}}),
         {{"Zínc", 3}, {"Zinc", 2}, {"zinc", 1}}},
        {"eight",
         drugs({{"A", "8"}, {"B", "7"}, {"C", "6"}, {"D", "5"}, {"E", "4"}, {"F", "3"}, {"G", "2"}, {"H", "1"}}),
         {{"A", 8}, {"B", 7}, {"C", 6}, {"D", 5}, {"E", 4}, {"F", 3}, {"G", 2}, {"H", 1}}},
        {"nine",
         drugs({{"A", "8"},
                {"B", "7"},
                {"C", "6"},
                {"D", "5"},
                {"E", "4"},
                {"F", "3"},
                {"G", "2"},
                {"H", "1.5"},
                {"I", "1"}}),
         {{"A", 8}, {"B", 7}, {"C", 6}, {"D", 5}, {"E", 4}, {"F", 3}, {"G", 2}, {"All Others", 2.5}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(barsOf(chartOf(row.records, CostBreakdown::ByDrug, here)), row.bars);
    }
    const Record nameless{{MHDispenseDateKey, "20240101"}, {MHTotalCostKey, "1"}};
    EXPECT_EQ(barsOf(chartOf({nameless}, CostBreakdown::ByPharmacy, here)), (Bars{{"", 1}}));
}

TEST(CostChart, NamesMonthsAtTheAxisUpToThreeYears) {
    const Environment here = in("en_US");
    const Chart three = chartOf({fill("20230105", "1"), fill("20251205", "1")}, CostBreakdown::ByMonth, here);
    ASSERT_EQ(three.bars.size(), 36U);
    EXPECT_EQ(three.bars[1].axisLabel, "Feb 2023");
    const Chart longer = chartOf({fill("20221205", "1"), fill("20251205", "1")}, CostBreakdown::ByMonth, here);
    ASSERT_EQ(longer.bars.size(), 37U);
    EXPECT_EQ(longer.bars[0].axisLabel, "");
    EXPECT_EQ(longer.bars[1].axisLabel, "2023");
    EXPECT_EQ(longer.bars[2].axisLabel, "");
    EXPECT_EQ(longer.bars[1].label, "Jan 2023");
}

TEST(CostChart, SaysAmountsInTheRegionsWay) {
    const Chart chart =
        chartOf({fill("20240105", "1234.50"), fill("20240205", "700")}, CostBreakdown::ByMonth, in("en_US"));
    EXPECT_EQ(chart.bars.at(0).amountText, "$1,234.50");
    ASSERT_TRUE(chart.average);
    EXPECT_EQ(chart.average->text, "Average Monthly Cost: $1,899.36");
    std::vector<std::string> marks;
    for (const ChartMark& mark : chart.axis) {
        marks.push_back(mark.text);
    }
    EXPECT_EQ(marks, (std::vector<std::string>{"$0", "$500", "$1,000", "$1,500", "$2,000"}));
    EXPECT_EQ(chartOf({fill("20240105", "0.03")}, CostBreakdown::ByMonth, in("en_US")).axis.at(1).text, "$0.01");
    EXPECT_FALSE(chartOf({fill("20240105", "1")}, CostBreakdown::ByDrug, in("en_US")).average);
}

TEST(CostChart, TheAxisReachesAroundTheAverageToo) {
    struct Row {
        const char* what;
        Records records;
    };
    // Six weeks over three months: a month of average length costs more than each of them.
    const std::vector<Row> rows = {
        {"paid", {fill("20231231", "50"), fill("20240215", "50")}},
        {"paid back", {fill("20231231", "-50"), fill("20240215", "-50")}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const Chart chart = chartOf(row.records, CostBreakdown::ByMonth, in("en_US"));
        EXPECT_LE(chart.axis.front().amount, chart.average->amount);
        EXPECT_GE(chart.axis.back().amount, chart.average->amount);
    }
}

}  // namespace
}  // namespace kpx
