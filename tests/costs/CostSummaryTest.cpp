#include "core/Keys.h"
#include "costs/CostSummary.h"
#include "region/DateUtilities.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <vector>

namespace kpx {
namespace {

Environment in(const char* locale) { return {{}, Region(locale, "America/New_York")}; }

struct Row {
    const char* locale;
    const char* stored;
    double sum;
};

TEST(CostSummary, ReadsStoredCostsInItsOwnWay) {
    const std::vector<Row> rows = {
        {"en_US", "12.50", 12.5},  {"en_US", "$1,234.50", 1234.5},
        {"en_US", ".50", 0.5},     {"en_US", "free", 0},
        {"de_DE", "12.50", 1250},  {"de_DE", "12,50", 12},
        {"en_US", "0x10", 0},      {"en_US", "nan", 0},
        {"fr_FR", "12,50", 12},    {"en_US", "", 0},
        {"en_US", "12 pills", 12},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.stored);
        EXPECT_DOUBLE_EQ(calcTotalCost({Record{{MHTotalCostKey, row.stored}}}, MHTotalCostKey, in(row.locale)),
                         row.sum);
    }
    EXPECT_EQ(calcTotalCost({}, MHTotalCostKey, in("en_US")), 0);
}

TEST(CostSummary, AveragesOverMonthsFromOneOn) {
    EXPECT_EQ(calcAvgCost(100, 0), 100);
    EXPECT_EQ(calcAvgCost(100, 0.999), 100);
    EXPECT_EQ(calcAvgCost(100, 1), 100);
    EXPECT_EQ(calcAvgCost(100, 2), 50);
    EXPECT_EQ(calcAvgCost(100, -3), 100);
    EXPECT_EQ(calcAvgCost(100, std::numeric_limits<double>::quiet_NaN()), 100);
}

TEST(CostSummary, MonthsAreOfOneLength) {
    const Environment here = in("en_US");
    EXPECT_NEAR(calcElapsedMonths(dateFromYear(2024, 2, 19, here), dateFromYear(2024, 1, 5, here)), 1.478, 0.001);
    EXPECT_LT(calcElapsedMonths(dateFromYear(2024, 1, 5, here), dateFromYear(2024, 2, 19, here)), 0);
}

TEST(CostSummary, TellsTheRange) {
    const Environment here = in("en_US");
    Records records = {Record{{MHDispenseDateKey, "20240320"}}, Record{{MHDispenseDateKey, "20240105"}},
                       Record{{MHDispenseDateKey, "20240210"}}};
    const CostFigures figures = costFigures(records, here);
    EXPECT_EQ(records[0].text(MHDispenseDateKey), Text("20240105"));
    EXPECT_EQ(costSummaryLine(3, figures.range, here, LocalizedStrings()),
              "Found 3 qualifying prescriptions with a (earliest/latest)dispense date range of: 1/5/24 to 3/20/24");
    Records none;
    EXPECT_FALSE(earliestDate(none, MHDispenseDateKey, here));
}

}  // namespace
}  // namespace kpx
