#include "drawing/Chart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace kpx {
namespace {

TEST(RoundMarks, AreRoundAndReachAround) {
    struct Row {
        double lowest, highest;
        std::vector<double> marks;
    };
    const std::vector<Row> rows = {
        {0, 0, {0, 1}},
        {0, 4, {0, 1, 2, 3, 4}},
        {3, 4.01, {0, 2, 4, 6}},
        {0, 40, {0, 10, 20, 30, 40}},
        {0, 97, {0, 50, 100}},
        {0, 1234.5, {0, 500, 1000, 1500}},
        {-5, 0, {-6, -4, -2, 0}},
        {-5, 12, {-5, 0, 5, 10, 15}},
        {-8, -2, {-8, -6, -4, -2, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.highest);
        EXPECT_EQ(roundMarks(row.lowest, row.highest), row.marks);
    }
    EXPECT_NEAR(roundMarks(0, 0.03).at(1), 0.01, 1e-12);
}

TEST(RoundMarks, StayFewWhateverTheAmounts) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double highest : {1e-300, 0.001, 0.07, 1.0, 99.99, 123456.789, 1e15, 1e300, 1.7e308, infinity}) {
        for (const double lowest : {0.0, -highest, -highest / 7, -infinity, std::nan("")}) {
            SCOPED_TRACE(highest);
            const std::vector<double> marks = roundMarks(lowest, highest);
            EXPECT_GE(marks.size(), 2U);
            EXPECT_LE(marks.size(), 8U);
            EXPECT_LE(marks.front(), 0);
            EXPECT_GE(marks.back() + (marks[1] - marks[0]) * 1e-9, std::min(highest, 1e300));
            EXPECT_TRUE(std::isfinite(marks.back()));
        }
    }
}

}  // namespace
}  // namespace kpx
