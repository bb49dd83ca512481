#include "core/CellText.h"

#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>

namespace kpx {
namespace {

TEST(CellText, ShowsWhatAColumnShows) {
    struct Row {
        const char* column;
        Value value;
        const char* shown;
    };
    const std::vector<Row> rows = {
        {"patient", "Ann", "Ann"},
        {"dayssupply", 30, "30"},
        {"cost", 1234.5, "1,234.50"},
        {"cost", 9, "9.00"},
        {"scriptnote", "9", "9"},
        {"expiredate", universal(2024, 12, 31), "12/31/24"},
        {"filltype", "Refill", "Refill"},
        {"patient", "", ""},
        {"when", universal(2024, 12, 31, 14, 5), "12/31/24  2:05\xE2\x80\xAFPM"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.column);
        EXPECT_EQ(shownText(row.column, row.value, environmentFor("en_US"), {}), row.shown);
    }
}

TEST(CellText, MakesALineAndATableOfARow) {
    const Record row = {{"patient", "Ann\tHolloway"}, {"scriptnote", "a < b\r\n& c > d"}, {"cost", 1234.5}};
    const std::vector<std::string> columns = {"patient", "cost", "pharmacy", "scriptnote"};
    const Environment here = environmentFor("en_US");
    EXPECT_EQ(rowAsText(row, columns, here, {}), "Ann Holloway\t1,234.50\t\ta < b  & c > d");
    EXPECT_EQ(rowAsTable(row, columns, {"Patient", "Cost", "A & B", "Note"}, here, {}),
              "<table><tr><th>Patient</th><th>Cost</th><th>A &amp; B</th><th>Note</th></tr>"
              "<tr><td>Ann\tHolloway</td><td>1,234.50</td><td></td><td>a &lt; b\r\n&amp; c &gt; d</td></tr></table>");
    EXPECT_EQ(rowAsText({}, {"patient"}, here, {}), "");
}

}  // namespace
}  // namespace kpx
