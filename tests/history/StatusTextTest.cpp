#include "history/StatusText.h"

#include <gtest/gtest.h>

#include <vector>

namespace kpx {
namespace {

TEST(StatusText, TellsOfStoredFills) {
    struct Row {
        const char* fillType;
        std::int64_t refillsLeft;
        const char* added;
        const char* changed;
    };
    const std::vector<Row> rows = {
        {"Refill", 1, "Added 4417203, refill, 1 refill left", "Changed 4417203, refill, 1 refill left"},
        {"Refill", 0, "Added 4417203, refill, 0 refills left", "Changed 4417203, refill, 0 refills left"},
        {"Initial", 3, "Added 4417203, initial, 3 refills left", "Changed 4417203, initial, 3 refills left"},
        {"Initial", 1, "Added 4417203, initial, 1 refill left", "Changed 4417203, initial, 1 refill left"},
        {"refill", 2, "Added 4417203, 2 refills left", "Changed 4417203, 2 refills left"},
        {"", 1, "Added 4417203, 1 refill left", "Changed 4417203, 1 refill left"},
        {"", -1, "Added 4417203, -1 refills left", "Changed 4417203, -1 refills left"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.added);
        EXPECT_EQ(addedText("4417203", row.fillType, row.refillsLeft, {}), row.added);
        EXPECT_EQ(changedText("4417203", row.fillType, row.refillsLeft, {}), row.changed);
    }
}

TEST(StatusText, TellsHowManyFillsWereDeleted) {
    EXPECT_EQ(deletedText("4417203", 1, {}), "Deleted 1 fill of 4417203");
    EXPECT_EQ(deletedText("4417203", 3, {}), "Deleted 3 fills of 4417203");
    EXPECT_EQ(deletedText("100%1$@", 2, {}), "Deleted 2 fills of 100%1$@");
}

}  // namespace
}  // namespace kpx
