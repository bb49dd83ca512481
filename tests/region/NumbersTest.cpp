#include "region/Numbers.h"

#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace kpx {
namespace {

TEST(Numbers, FormatCostStrings) {
    struct Row {
        double value;
        std::string text;
    };
    const std::vector<Row> rows = {
        {1234.5, "1234.50"},
        {0.5, ".50"},
        {0.125, ".12"},
        {0.135, ".14"},
        {2.675, "2.68"},
        {1.005, "1.00"},
        {0, ".00"},
        {-0.5, "-.50"},
        {-0.004, "-.00"},
        {0.004, ".00"},
        {0.005, ".00"},
        {0.015, ".02"},
        {0.0051, ".01"},
        {0.995, "1.00"},
        {0.985, ".98"},
        {0.999, "1.00"},
        {9.995, "10.00"},
        {9.994, "9.99"},
        {99.999, "100.00"},
        {-99.999, "-100.00"},
        {12, "12.00"},
        {12.5, "12.50"},
        {1234567.891, "1234567.89"},
        {1e15, "1000000000000000.00"},
        {1e22, "10000000000000000000000.00"},
        {1e23, "100000000000000000000000.00"},
        {1e-7, ".00"},
        {5e-324, ".00"},
        {0.1 + 0.2, ".30"},
        {0.05, ".05"},
        {0.0050000000000000001, ".00"},
        {HUGE_VAL, "\u221E"},
        {-HUGE_VAL, "-\u221E"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(formatCostStrings(row.value), row.text);
    }
}

TEST(Numbers, FormatCostStringsAgreesWithTheDecimalFormatEverywhere) {
    const Environment environment = environmentFor("en_US");
    std::mt19937_64 random(20240305);
    std::uniform_int_distribution<std::int64_t> thousandths(-3000000, 3000000);
    std::uniform_real_distribution<double> magnitudes(-6, 20);
    std::vector<double> values = {-0.0, std::numeric_limits<double>::max(), std::numeric_limits<double>::min()};
    for (int round = 0; round < 20000; ++round) {
        values.push_back(static_cast<double>(thousandths(random)) / 1000);
        values.push_back(std::pow(10, magnitudes(random)));
    }
    for (const double value : values) {
        ASSERT_EQ(formatCostStrings(value), copyFormatStringForTextField(value, "######.00", environment)) << value;
    }
}

TEST(Numbers, CleanFormatCostStr) {
    struct Row {
        std::string locale;
        std::string text;
        std::string stored;
    };
    const std::vector<Row> rows = {
        {"en_US", "$1,234.5", "1234.50"},
        {"en_US", "", ".00"},
        {"en_US", "12", "12.00"},
        {"en_US", "0.5", ".50"},
        {"en_US", "1,,2,3", "123.00"},
        {"en_US", "x", ".00"},
        {"en_US", "$ 5", "5.00"},
        {"en_US", "$$5$", "5.00"},
        {"en_US", "0x1F", ".00"},
        {"en_US", "nan", ".00"},
        {"en_GB", "\u00A31,234.5", "1234.50"},
        {"en_GB", "$5", ".00"},
        {"de_DE", "12,50 \u20AC", "12.00"},
        {"de_DE", "1.234,50", "1234.00"},
        {"de_DE", "12.5", "125.00"},
        {"de_CH", "CHF 1\u2019234.50", "1234.50"},
        {"de_CH", "CHF\u00A012.5", "12.50"},
        {"ar_EG", "12.5", "12.50"},
        {"th_TH", "\u0E3F1,234.5", "1234.50"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.locale + " " + row.text);
        EXPECT_EQ(cleanFormatCostStr(row.text, environmentFor(row.locale)), row.stored);
    }
    EXPECT_EQ(cleanFormatCostStr(std::nullopt, environmentFor("de_DE")), ".00");
}

TEST(Numbers, PatternOfTheEntryField) {
    struct Row {
        std::string locale;
        double value;
        std::string text;
    };
    const std::vector<Row> rows = {
        {"en_US", 1234.5, "1,234.50"}, {"en_US", 0.5, ".50"},
        {"en_US", 0, ".00"},           {"en_US", 1234567.125, "1,234,567.12"},
        {"de_DE", 1234.5, "1.234,50"}, {"de_DE", 0.5, ",50"},
        {"en_GB", 1234.5, "1,234.50"}, {"de_CH", 1234.5, "1\u2019234.50"},
        {"th_TH", 1234.5, "1,234.50"}, {"ar_EG", 1234.5, "\u0661\u066C\u0662\u0663\u0664\u066B\u0665\u0660"},
        {"en_US", -0.004, "-.00"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.locale + " " + row.text);
        EXPECT_EQ(copyFormatStringForTextField(row.value, "###,###,###.00", environmentFor(row.locale)), row.text);
    }
    EXPECT_EQ(copyFormatStringForTextField(5, "#.#.#", environmentFor("en_US")), "");
}

TEST(Numbers, FormatCurrency) {
    struct Row {
        std::string locale;
        double value;
        std::string text;
    };
    const std::vector<Row> rows = {
        {"en_US", 1234.5, "$1,234.50"},
        {"en_US", 0, "$0.00"},
        {"en_US", -0.5, "-$0.50"},
        {"en_US", 0.125, "$0.12"},
        {"de_DE", 1234.5, "\u20AC1.234,50"},
        {"en_GB", 1234.5, "\u00A31,234.50"},
        {"de_CH", 1234.5, "CHF\u00A01\u2019234.50"},
        {"ja_JP", 1234.5, "\uFFE51,234.50"},
        {"C", 1234.5, "$1,234.50"},
        {"th_TH", 1234.5, "\u0E3F1,234.50"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.locale);
        EXPECT_EQ(formatCurrency(row.value, environmentFor(row.locale)), row.text);
    }
}

TEST(Numbers, RowCostFromStoredText) {
    struct Row {
        std::string text;
        std::optional<double> cost;
    };
    const std::vector<Row> rows = {
        {"12.50", 12.5},
        {".50", 0.5},
        {".00", 0.0},
        {"1234.50", 1234.5},
        {"-3.00", -3.0},
        {"-.50", -0.5},
        {"12", 12.0},
        {"12.", 12.0},
        {"1,234.50", 1234.5},
        {"\u221E", HUGE_VAL},
        {"", std::nullopt},
        {".", std::nullopt},
        {"-", std::nullopt},
        {"abc", std::nullopt},
        {"12.50x", std::nullopt},
        {"12.50 ", std::nullopt},
        {"$12.50", std::nullopt},
        {"1.2.3", std::nullopt},
        {"NaN", std::nullopt},
        {"0x10", std::nullopt},
        {"inf", std::nullopt},
        {"--3", std::nullopt},
        {"\xff", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(rowCostFromStoredText(row.text), row.cost);
    }
}

TEST(Numbers, StoredCostsSurviveTheRow) {
    for (int cents = -250; cents < 250000; cents += 7) {
        const std::string stored = formatCostStrings(cents / 100.0);
        const std::optional<double> cost = rowCostFromStoredText(stored);
        ASSERT_TRUE(cost) << stored;
        ASSERT_EQ(formatCostStrings(*cost), stored);
    }
    EXPECT_EQ(formatCostStrings(rowCostFromStoredText("-.00").value_or(1)), "-.00");
}

TEST(Numbers, RemovesGroupingAndCurrency) {
    EXPECT_EQ(removingGroupingAndCurrency("$1,2$34,.5", environmentFor("en_US")), "1234.5");
    EXPECT_EQ(removingGroupingAndCurrency("1.234,5 \u20AC", environmentFor("de_DE")), "1234,5 ");
    EXPECT_EQ(removingGroupingAndCurrency("", environmentFor("en_US")), "");
}

TEST(Numbers, DecimalSeparator) {
    EXPECT_EQ(decimalSeparator(environmentFor("en_US")), ".");
    EXPECT_EQ(decimalSeparator(environmentFor("de_DE")), ",");
    EXPECT_EQ(decimalSeparator(environmentFor("de_CH")), ".");
    EXPECT_EQ(decimalSeparator(environmentFor("ar_EG")), "\u066B");
}

}  // namespace
}  // namespace kpx
