#include "schedule/DueText.h"

#include "core/Keys.h"
#include "tests/support/RegionSupport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kpx {
namespace {

/// With a supply of thirty days.
Record fill(const std::string& rxNumber, const char* dispensed) {
    return Record{{MHPatientKey, "Ann"},
                  {MHPharmacyKey, "Corner"},
                  {MHDrugKey, "Drug " + rxNumber},
                  {MHPrescriberKey, "Dr. Lee"},
                  {MHRxNumberKey, rxNumber},
                  {MHDaysSupplyKey, 30},
                  {MHRefillsKey, 2},
                  {MHRefillsRemainKey, 2},
                  {MHDispenseDateKey, dispensed},
                  {MHExpireDateKey, "20250105"},
                  {MHFillTypeKey, "Initial"}};
}

TEST(DueText, CountsWhatIsDueAndWhatWasDueBeforeToday) {
    // On 5 March 2024. What was dispensed on 4 February lasts until today.
    constexpr char dueToday[] = "20240204";
    constexpr char dueYesterday[] = "20240203";
    constexpr char dueTomorrow[] = "20240205";
    struct Row {
        std::vector<const char*> dispensed;
        const char* text;
    };
    const std::vector<Row> rows = {
        {{}, "Nothing is due."},
        {{dueTomorrow}, "Nothing is due."},
        {{dueToday}, "1 refill is due"},
        {{dueYesterday}, "1 refill is due, 1 is overdue"},
        {{dueToday, dueToday}, "2 refills are due"},
        {{dueToday, dueYesterday, dueToday}, "3 refills are due, 1 is overdue"},
        {{dueYesterday, dueYesterday, dueYesterday}, "3 refills are due, 3 are overdue"},
        {{dueYesterday, dueTomorrow}, "1 refill is due, 1 is overdue"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Records history;
        for (std::size_t index = 0; index < row.dispensed.size(); ++index) {
            history.push_back(fill(std::to_string(index), row.dispensed[index]));
        }
        EXPECT_EQ(dueText(history, environmentFor("en_US"), {}), row.text);
    }
}

}  // namespace
}  // namespace kpx
