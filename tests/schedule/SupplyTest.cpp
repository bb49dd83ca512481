#include "region/DateUtilities.h"
#include "schedule/Supply.h"

#include <gtest/gtest.h>

#include <vector>

namespace kpx {
namespace {

TEST(Supply, CountsCalendarDaysToTheDayOfTheNextFill) {
    struct Row {
        const char* what;
        const char* zone;
        const char* today;
        double hours;  ///< of today
        const char* filled;
        int days;
        Supply supply;
    };
    const std::vector<Row> rows = {
        {"on the day of the fill", "UTC", "20240301", 0, "20240301", 30, {30, 30}},
        {"late on that day", "UTC", "20240301", 23.9, "20240301", 30, {30, 30}},
        {"the day after", "UTC", "20240302", 0, "20240301", 30, {30, 29}},
        {"the day before it is due", "UTC", "20240330", 12, "20240301", 30, {30, 1}},
        {"the day it is due", "UTC", "20240331", 0, "20240301", 30, {30, 0}},
        {"overdue", "UTC", "20240403", 23, "20240301", 30, {30, -3}},
        {"filled in the future", "UTC", "20240201", 0, "20240301", 30, {30, 30}},
        {"no supply", "UTC", "20240301", 0, "20240301", 0, {0, 0}},
        {"less than none", "UTC", "20240301", 0, "20240301", -5, {-5, -5}},
        {"across the spring change", "America/New_York", "20240310", 12, "20240301", 30, {30, 21}},
        {"across the autumn change, shown a day early", "America/New_York", "20241020", 9, "20241020", 30, {30, 29}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        Environment here{{}, Region("en_US", row.zone)};
        here.now = dateFromYYMMDDStr(row.today, here).addingSeconds(row.hours * 3600);
        const Date last = dateFromYYMMDDStr(row.filled, here);
        const Record shown{{"lastdate", last}, {"nextdate", last.addingSeconds(row.days * 86400.0)}};
        EXPECT_EQ(supplyOfRow(shown, here), row.supply);
    }
}

TEST(Supply, NeedsBothDates) {
    const Environment here{{}, Region("en_US", "UTC")};
    EXPECT_FALSE(supplyOfRow(Record{{"nextdate", Date()}}, here));
    EXPECT_FALSE(supplyOfRow(Record{{"lastdate", Date()}, {"nextdate", "soon"}}, here));
}

TEST(Supply, IsSaidInDays) {
    EXPECT_EQ(supplyText({30, 12}, {}), "12 of 30 days left");
    EXPECT_EQ(supplyText({30, 0}, {}), "0 of 30 days left");
    EXPECT_EQ(supplyText({30, -4}, {}), "0 of 30 days left");
    EXPECT_EQ(supplyText({-5, -9}, {}), "0 of 0 days left");
}

}  // namespace
}  // namespace kpx
