#include "values/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {
namespace {

TEST(NumberText, LeadingNumber) {
    struct Row {
        std::string text;
        double value;
    };
    const std::vector<Row> rows = {
        {"", 0},
        {"12", 12},
        {"12.5", 12.5},
        {".5", 0.5},
        {"5.", 5},
        {"-3.25", -3.25},
        {"+3", 3},
        {"  7", 7},
        {"\t\n7", 7},
        {"\u00A012", 12},
        {"\u202F12", 12},
        {"12,50", 12},
        {"1e3", 1000},
        {"1E+2x", 100},
        {"1e", 1},
        {"2.5e-1", 0.25},
        {"abc", 0},
        {"a1", 0},
        {"-", 0},
        {"+", 0},
        {".", 0},
        {"-.", 0},
        {"-.5", -0.5},
        {"--5", 0},
        {"+-5", 0},
        {"0x1A", 0},
        {"inf", 0},
        {"-inf", 0},
        {"infinity", 0},
        {"nan", 0},
        {"NAN(1)", 0},
        {"1.2.3", 1.2},
        {"1e400", HUGE_VAL},
        {"-1e400", -HUGE_VAL},
        {"1e-400", 0},
        {"0e999999999999999999999", 0},
        {"1e999999999999999999999", HUGE_VAL},
        {"1e-999999999999999999999", 0},
        {"1e99999999999999999x", HUGE_VAL},
        {"12.50 each", 12.5},
        {"5e-324", 5e-324},
        {"\xff\xfe", 0},
        {"\u0661\u0662", 0},
        {std::string(400, '9'), HUGE_VAL},
        {"-" + std::string(400, '9'), -HUGE_VAL},
        {"." + std::string(400, '0') + "1", 0},
        {std::string(400, '0') + "7", 7},
        {"." + std::string(400, '0') + "1e401", 1},
        {"1" + std::string(400, '0') + "e-400", 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(leadingNumber(row.text), row.value);
    }
}

TEST(NumberText, LeadingNumberReadsAViewOnly) {
    const std::string text = "12.75";
    EXPECT_EQ(leadingNumber(std::string_view(text).substr(0, 2)), 12);
}

TEST(NumberText, LeadingInteger) {
    struct Row {
        std::string text;
        std::int64_t value;
    };
    const std::vector<Row> rows = {
        {"", 0},
        {"30", 30},
        {"030", 30},
        {" 30 days", 30},
        {"-5", -5},
        {"+5", 5},
        {"12.9", 12},
        {"x5", 0},
        {"-", 0},
        {"--5", 0},
        {"0x10", 0},
        {"1e3", 1},
        {"9223372036854775807", INT64_MAX},
        {"9223372036854775808", INT64_MAX},
        {"-9223372036854775808", INT64_MIN},
        {"-9223372036854775809", INT64_MIN},
        {"99999999999999999999999", INT64_MAX},
        {"-99999999999999999999999", INT64_MIN},
        {"\u0663", 0},
        {"\xff", 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(leadingInteger(row.text), row.value);
    }
}

TEST(NumberText, IsItaNumber) {
    for (const char* text : {"0", "7", "007", "123", "99999999999999999999999999"}) {
        EXPECT_TRUE(isItaNumber(text)) << text;
    }
    for (const char* text : {"", "12a", "a", " 1", "1 ", "-1", "+1", "1.5", "1,000", "\u0661", "0x1", "1e3"}) {
        EXPECT_FALSE(isItaNumber(text)) << text;
    }
}

TEST(NumberText, IsWholeNumber) {
    for (const std::string_view text : {"0", "9", "-9", "+9", "007", "9223372036854775807", "-9223372036854775808"}) {
        EXPECT_TRUE(isWholeNumber(text)) << text;
    }
    for (const std::string_view text :
         {"", "-", "+", "+-9", "--9", " 9", "9 ", "9.0", "9a", "٩", "9223372036854775808"}) {
        EXPECT_FALSE(isWholeNumber(text)) << text;
    }
}

}  // namespace
}  // namespace kpx
