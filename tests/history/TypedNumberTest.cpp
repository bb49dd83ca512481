#include "history/TypedNumber.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx {
namespace {

TEST(TypedNumber, BecomesWhatTheRulesAndFilesKnow) {
    struct Row {
        std::string before, typed;
        bool comma;
        std::string after;
    };
    const std::vector<Row> rows = {
        {"", "1", true, "1"},
        {"1", ".", true, "1."},
        {"1.234", ",", true, "1234."},
        {"1.234.567", ",", true, "1234567."},
        {"", ",", true, "."},
        {"12.", ",", true, "12."},
        {"12", ",", false, "12,"},
        {"1.2", ",", false, "1.2,"},
        {"", "1.234,50", true, "1234.50"},
        {"1", "٢", false, "12"},
        {"1", "۲", true, "12"},
        {"", "३०", false, "30"},
        {"", "１𞥒", false, "12"},
        {"", "၄", false, "4"},
        {"1", "²", false, "1²"},
        {"1", "٫", true, "1٫"},
        {"1", "四", true, "1四"},
        {"1", "x\xFFy", true, "1x\xFFy"},
        {"٣", "٣", true, "٣3"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(numberAfterTyping(row.before, row.typed, row.comma), row.after) << row.before << " " << row.typed;
    }
}

}  // namespace
}  // namespace kpx
