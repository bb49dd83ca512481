#include "core/Keys.h"
#include "region/DateUtilities.h"
#include "schedule/RefillsToOrder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kpx {
namespace {

const Environment newYork{{}, Region("en_US", "America/New_York")};

Date day(int number, int hour = 8) {
    return dateAtTimeOfDay(dateFromYear(2024, 5, number, newYork), hour, 0, 0, newYork);
}

/// A fill of 1 May that lasts so many days: its next fill date is that day after the first of May.
Record fill(const char* drug, int days, Value remaining = std::int64_t(2), const char* expires = "20301231") {
    return Record{{MHPatientKey, "Ann"},
                  {MHDrugKey, drug},
                  {MHDispenseDateKey, "20240501"},
                  {MHDaysSupplyKey, std::int64_t(days)},
                  {MHRefillsRemainKey, std::move(remaining)},
                  {MHExpireDateKey, expires}};
}

std::string textOn(const Records& history, const StandingDays& days,
                   const std::vector<RemindedPrescription>& reminded = {}) {
    const auto refills = refillsToOrder(history, days, reminded, newYork, {});
    return refills ? refills->text : std::string();
}

// The next fill date is 15 May.
TEST(RefillsToOrder, NamesAPrescriptionOnItsDays) {
    struct Row {
        const char* what;
        int day;
        int missed;
        int lead;
        bool named;
    };
    const std::vector<Row> rows = {
        {"a week before", 8, 0, 7, true},
        {"the day after that", 9, 0, 7, false},
        {"three days before, of a week", 12, 0, 7, false},
        {"three days before", 12, 0, 3, true},
        {"four days before", 11, 0, 3, false},
        {"the day itself", 15, 0, 7, true},
        {"the day itself, without a lead", 15, 0, 0, true},
        {"the day before, without a lead", 14, 0, 0, false},
        {"a day overdue", 16, 0, 0, false},
        {"six days overdue", 21, 0, 3, false},
        {"a week overdue", 22, 0, 3, true},
        {"eight days overdue", 23, 0, 3, false},
        {"two weeks overdue", 29, 0, 0, true},
        {"the lead's day was missed", 10, 2, 7, true},
        {"it was missed longer ago than that", 10, 1, 7, false},
        {"the day itself was missed", 16, 1, 7, true},
        {"a week's day was missed", 24, 2, 7, true},
        {"none of the missed days was one", 21, 5, 7, false},
        {"everything was missed", 28, 27, 7, true},
        {"missed, and nothing due yet", 7, 200, 7, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const StandingDays days{.day = day(row.day), .missed = row.missed, .lead = row.lead};
        EXPECT_EQ(textOn({fill("Zinc", 14)}, days), row.named ? "Zinc for Ann: May 15, 2 refills left" : "");
    }
}

TEST(RefillsToOrder, LeavesOutWhatCannotBeOrdered) {
    const StandingDays days{.day = day(15, 23)};
    EXPECT_EQ(textOn({fill("Zinc", 14, std::int64_t(0))}, days), "");
    EXPECT_EQ(textOn({fill("Zinc", 14, std::int64_t(-1))}, days), "");
    EXPECT_EQ(textOn({fill("Zinc", 14, "no")}, days), "");
    EXPECT_EQ(textOn({fill("Zinc", 14, "1")}, days), "Zinc for Ann: May 15, 1 refill left");
    EXPECT_EQ(textOn({fill("Zinc", 14, std::int64_t(2), "20240514")}, days), "");
    EXPECT_EQ(textOn({fill("Zinc", 14, std::int64_t(2), "20240515")}, days), "") << "as the schedule counts it";
    EXPECT_EQ(textOn({fill("Zinc", 14, std::int64_t(2), "20240516")}, days), "Zinc for Ann: May 15, 2 refills left");
    EXPECT_EQ(textOn({}, days), "");
    EXPECT_EQ(textOn({Record{{MHRefillsRemainKey, std::int64_t(1)}}}, days), "") << "it has no next fill date";
}

TEST(RefillsToOrder, OnlyTheLatestFillCounts) {
    Record later = fill("Zinc", 30);
    later.set(MHDispenseDateKey, "20240514");
    EXPECT_EQ(textOn({fill("Zinc", 14), later}, {.day = day(15)}), "");
    later.set(MHPatientKey, "ann");
    EXPECT_EQ(textOn({fill("Zinc", 14), later}, {.day = day(15)}), "Zinc for Ann: May 15, 2 refills left");
}

TEST(RefillsToOrder, AReminderOfItsOwnIsEnough) {
    struct Row {
        const char* what;
        const char* drug;
        RemindedPrescription reminded;
        bool named;
    };
    const std::vector<Row> rows = {
        {"of this one", "Zinc", {"Ann", "Zinc"}, false},
        {"of another patient", "Zinc", {"ann", "Zinc"}, true},
        {"of another drug", "Zinc", {"Ann", "Zink"}, true},
        {"of a name that its text cuts", "Zinc: 5", {"Ann", "Zinc"}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(!textOn({fill(row.drug, 14)}, {.day = day(15)}, {row.reminded}).empty(), row.named);
    }
}

TEST(RefillsToOrder, TheSoonestComeFirstAndSixAtMost) {
    Records history = {fill("Due", 14), fill("In a week", 21), fill("Overdue", 7)};
    const StandingDays days{.day = day(15), .lead = 7};
    EXPECT_EQ(textOn(history, days),
              "Overdue for Ann: May 8, 2 refills left\nDue for Ann: May 15, 2 refills left\n"
              "In a week for Ann: May 22, 2 refills left");
    for (const char* drug : {"E", "F", "G"}) {
        history.push_back(fill(drug, 14));
    }
    const std::string six = textOn(history, days);
    EXPECT_EQ(std::ranges::count(six, '\n'), 5);
    EXPECT_TRUE(six.ends_with("In a week for Ann: May 22, 2 refills left"));
    history.push_back(fill("H", 21));
    EXPECT_TRUE(textOn(history, days)
                    .ends_with("G for Ann: May 15, 2 refills left\nH for Ann: May 22, 2 refills left\nand 1 more"));
}

TEST(RefillsToOrder, TheMenuFindsItsLead) {
    EXPECT_EQ(standingChoiceOfLead(std::nullopt), 0);
    EXPECT_EQ(standingChoiceOfLead(0), 1);
    EXPECT_EQ(standingChoiceOfLead(3), 2);
    EXPECT_EQ(standingChoiceOfLead(7), 3);
    EXPECT_EQ(standingChoiceOfLead(5), 0);
}

}  // namespace
}  // namespace kpx
