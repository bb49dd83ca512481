#include "history/FilterText.h"

#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace kpx {
namespace {

TEST(FilterText, NamesWhatNarrowedTheRows) {
    const Environment here = environmentFor("en_US");
    const auto with = [](std::optional<std::string> patient, std::optional<std::string> drug, int type) {
        return HistoryFilter{.patient = std::move(patient),
                             .drug = std::move(drug),
                             .scriptType = type,
                             .begin = universal(2026, 1, 1),
                             .end = universal(2026, 11, 22, 12)};
    };
    constexpr int initial = 1;
    constexpr int refill = 2;
    constexpr int all = 3;
    struct Row {
        HistoryFilter filter;
        const char* text;
    };
    const std::vector<Row> rows = {
        {with("Ann Holloway", std::nullopt, refill), "Ann Holloway · Refill · 1/1/26 – 11/22/26"},
        {with(std::nullopt, std::nullopt, all), "1/1/26 – 11/22/26"},
        {with(std::nullopt, std::nullopt, 0), "1/1/26 – 11/22/26"},
        {with(std::nullopt, "Aspirin", initial), "Aspirin · Initial · 1/1/26 – 11/22/26"},
        {with("Ann", "Aspirin", all), "Ann · Aspirin · 1/1/26 – 11/22/26"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(filterText(row.filter, here, {}), row.text);
    }
}

}  // namespace
}  // namespace kpx
