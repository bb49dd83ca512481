#include "core/RowSearch.h"

#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>

namespace kpx {
namespace {

TEST(RowSearch, GoesRoundFromTheSelectedRow) {
    const Records rows = {Record{{"patient", "Ann"}, {"drugname", "Aspirin"}, {"cost", 12.5}},
                          Record{{"patient", "Bob"}, {"drugname", "Insulin"}, {"hidden", "Aspirin"}},
                          Record{{"patient", "José"}, {"drugname", "Zinc"}, {"expiredate", universal(2024, 12, 31)}},
                          Record{{"patient", "ann"}, {"drugname", "Ibuprofen"}}};
    const std::vector<std::string> columns = {"patient", "drugname", "cost", "expiredate"};
    constexpr auto forward = SearchDirection::Forward;
    constexpr auto backward = SearchDirection::Backward;
    struct Row {
        const char* text;
        int from;
        SearchDirection direction;
        std::optional<int> found;
    };
    const std::vector<Row> table = {
        {"ann", -1, forward, 0},    {"ann", 0, forward, 3},     {"ann", 3, forward, 0},    {"ann", -1, backward, 3},
        {"ann", 3, backward, 0},    {"ann", 0, backward, 3},    {"JOSE", -1, forward, 2},  {"josé", 2, forward, 2},
        {"José", 2, backward, 2},   {"aspirin", 0, forward, 0}, {"12.50", -1, forward, 0}, {"12/31/24", -1, forward, 2},
        {"zebra", -1, forward, {}}, {"", -1, forward, {}},      {"in", 1, forward, 2},     {"in", 9, forward, 0},
        {"in", 9, backward, 2},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(std::string(row.text) + " from " + std::to_string(row.from));
        EXPECT_EQ(nextRowHolding(row.text, rows, columns, row.from, row.direction, environmentFor("en_US"), {}),
                  row.found);
    }
    EXPECT_EQ(nextRowHolding("ann", {}, columns, -1, forward, environmentFor("en_US"), {}), std::nullopt);
}

}  // namespace
}  // namespace kpx
