#include "history/KPXNumberFormatter.h"

#include <gtest/gtest.h>
#include <vector>

namespace kpx {
namespace {

struct Row {
    const char* allowed;
    bool extraTests;
    const char* proposed;
    bool accepted;
};

TEST(KPXNumberFormatter, DecidesOverTheProposedText) {
    const std::vector<Row> rows = {
        {"0123456789.", true, "", true},         {"0123456789.", true, ".", true},
        {"0123456789.", true, "12.50", true},    {"0123456789.", true, "12.", true},
        {"0123456789.", true, "12.5.", false},   {"0123456789.", true, "..", false},
        {"0123456789.", true, "1..", false},     {"0123456789.", true, "1.2.3", true},
        {"0123456789.", true, "12a", false},     {"0123456789.", true, "1,234.50", false},
        {"0123456789.", true, "-1", false},      {"0123456789,", true, "1,2,", true},
        {"0123456789.-", true, "-1.5", true},    {"0123456789.-", true, "1-", false},
        {"0123456789.-", true, "--", false},     {"0123456789.-", true, "-", true},
        {"0123456789.-", false, "1-2.3.", true}, {"0123456789٫", true, "1٫5", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.proposed);
        const auto verdict = KPXNumberFormatter(row.allowed, row.extraTests).isPartialStringValid(row.proposed);
        EXPECT_EQ(verdict.accepted, row.accepted);
        EXPECT_EQ(verdict.replacement.has_value(), row.accepted && row.extraTests);
    }
}

}  // namespace
}  // namespace kpx
