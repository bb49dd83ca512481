#include "core/Keys.h"
#include "region/DateUtilities.h"
#include "schedule/RefillSchedule.h"
#include "schedule/Reminder.h"

#include <gtest/gtest.h>
#include <vector>

namespace kpx {
namespace {

const Region newYork("en_US", "America/New_York");

Environment at(int year, int month, int day, int hour = 0, int minute = 0) {
    const Environment region{{}, newYork};
    return {dateAtTimeOfDay(dateFromYear(year, month, day, region), hour, minute, 0, region), newYork};
}

Record fill(const char* patient, const char* drug, const char* dispensed, Value days, const char* expires = "20301231",
            const char* rxNumber = "1") {
    return Record{{MHPatientKey, patient},
                  {MHDrugKey, drug},
                  {MHRxNumberKey, rxNumber},
                  {MHDispenseDateKey, dispensed},
                  {MHDaysSupplyKey, std::move(days)},
                  {MHExpireDateKey, expires}};
}

TEST(RefillSchedule, KeepsTheLatestFillOfPatientAndDrug) {
    const Record older = fill("Ann", "Aspirin", "20240101", 30, "20301231", "1");
    const Record newer = fill("Ann", "Aspirin", "20240201", 30, "20301231", "2");
    const Record sameDay = fill("Ann", "Aspirin", "20240201", 30, "20301231", "3");
    const Record otherCase = fill("ann", "Aspirin", "20230101", 30);
    const Record bob = fill("Bob", "Aspirin", "20200101", 30);
    const Record bob10 = fill("Bob 10", "Aspirin", "20200101", 30);
    const Record bob9 = fill("Bob 9", "Aspirin", "20200101", 30);
    Records records = {bob10, older, bob, newer, otherCase, sameDay, bob9};
    removeDictsWithEarlierDispenseDate(records, at(2024, 3, 5));
    ASSERT_EQ(records.size(), 5U);
    EXPECT_EQ((Records{records[2], records[3], records[4]}), (Records{bob, bob9, bob10}));
    EXPECT_TRUE((records[0] == otherCase && records[1] == newer) || (records[0] == newer && records[1] == otherCase));
}

struct DueRow {
    const char* what;
    Record record;
    Environment environment;
    bool overdue;
    bool expired;
};

TEST(RefillSchedule, DueAndExpiredGoByTheExactInstant) {
    const std::vector<DueRow> rows = {
        {"the day before", fill("A", "D", "20240601", 30), at(2024, 6, 30, 23, 59), false, false},
        {"from 00:00 of the day", fill("A", "D", "20240601", 30), at(2024, 7, 1), true, false},
        {"expires today, at 00:00", fill("A", "D", "20240601", 1, "20240701"), at(2024, 7, 1), true, true},
        {"expires today, a minute later", fill("A", "D", "20240601", 1, "20240701"), at(2024, 7, 1, 0, 1), false, true},
        {"expires tomorrow", fill("A", "D", "20240601", 1, "20240702"), at(2024, 7, 1, 23, 59), true, false},
        {"autumn: an hour early", fill("A", "D", "20241025", 10), at(2024, 11, 3, 23, 0), true, false},
        {"spring: an hour late", fill("A", "D", "20240301", 30), at(2024, 3, 31, 0, 59), false, false},
        {"spring: due at 01:00", fill("A", "D", "20240301", 30), at(2024, 3, 31, 1, 0), true, false},
        {"days supply that is no number", fill("A", "D", "20240601", "many"), at(2024, 6, 1), true, false},
        {"days supply as a text", fill("A", "D", "20240601", "30 days"), at(2024, 6, 30), false, false},
        {"no expiration date", Record{{MHDispenseDateKey, "20240601"}}, at(2024, 6, 1), true, true},
        {"no expiration date, not yet due", Record{{MHDispenseDateKey, "20240602"}}, at(2024, 6, 1), false, true},
        {"no dispense date", Record{{MHExpireDateKey, "20241231"}}, at(2024, 6, 1), true, false},
        {"no dispense date, expired", Record{{MHExpireDateKey, "20240531"}}, at(2024, 6, 1), false, true},
    };
    for (const DueRow& row : rows) {
        SCOPED_TRACE(row.what);
        Records overdue = {row.record};
        overDueOnly(overdue, row.environment);
        EXPECT_EQ(!overdue.empty(), row.overdue);
        Records expired = {row.record};
        expiredOnly(expired, row.environment);
        EXPECT_EQ(!expired.empty(), row.expired);
    }
}

TEST(RefillSchedule, RowsHoldDates) {
    const Environment now = at(2024, 6, 1);
    Record bare{{MHPatientKey, "Bob"}};
    const Records rows = copyMaintDueArrayForTVFromFilteredArray({fill("Ann", "Aspirin", "20240601", 30), bare}, now);
    EXPECT_EQ(rows[0].date("nextdate"), at(2024, 7, 1).now);
    EXPECT_EQ(rows[0].date("lastdate"), at(2024, 6, 1).now);
    EXPECT_EQ(rows[1], (Record{{"patientTabTwo", "Bob"}}));
    EXPECT_FALSE(isDueCell(rows[0], "nextdate", now.now));
    EXPECT_TRUE(isDueCell(rows[0], "nextdate", at(2024, 7, 1).now));
    EXPECT_FALSE(isDueCell(rows[0], "lastdate", at(2024, 7, 1).now));
    EXPECT_FALSE(isDueCell(rows[1], "nextdate", now.now));
}

TEST(Reminder, TextLeadsBackToThePrescription) {
    EXPECT_EQ(reminderText({.patient = "Ann", .drug = "Lisinopril"}, LocalizedStrings()),
              "Prescription: Lisinopril\r for patient: Ann\r is due");
    struct Row {
        const char* text;
        std::optional<RemindedPrescription> prescription;
    };
    const std::vector<Row> rows = {
        {"Prescription: Lisinopril\r for patient: Ann\r is due", RemindedPrescription{"Ann", "Lisinopril"}},
        {"Prescription: A: B\r for patient: Ann: x\r is due", RemindedPrescription{"Ann", "A"}},
        {"Prescription:\r for patient:\r is due", RemindedPrescription{"", ""}},
        {"one line", std::nullopt},
        {"", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(prescriptionFromReminderText(row.text), row.prescription);
    }
}

TEST(Reminder, IsDeliveredAtEightAndNeedsAFutureDate) {
    const Environment now = at(2024, 6, 30, 12, 0);
    EXPECT_EQ(reminderDeliveryDate(at(2024, 7, 1).now, now), at(2024, 7, 1, 8).now);
    EXPECT_FALSE(reminderCaption(false, std::nullopt, now, LocalizedStrings()).canRemind);
    EXPECT_FALSE(reminderCaption(true, now.now, now, LocalizedStrings()).canRemind);
    const auto caption = reminderCaption(true, at(2024, 7, 1).now, now, LocalizedStrings());
    EXPECT_TRUE(caption.canRemind);
    EXPECT_EQ(caption.caption, "Prescription selected for:  Jul 1, 2024");
}

TEST(RefillSchedule, TellsTheFirstReasonWhyThereIsNone) {
    const Records history = {fill("Ann", "Aspirin", "20240101", 30)};
    const std::optional<std::string> name = "All";
    struct Row {
        std::optional<std::string> patient, drug;
        Records history;
        int tag;
        const char* begin;  // of the refusal; null for none
    };
    const std::vector<Row> rows = {
        {name, name, history, 1, nullptr},
        {name, name, history, 4, nullptr},
        {name, name, history, 0, "Invalid 'case'"},
        {name, name, history, 5, "Invalid 'case'"},
        {name, name, {}, 5, "There is no prescription"},
        {name, "", {}, 1, "No Drug Selected"},
        {name, std::nullopt, history, 1, "No Drug Selected"},
        {"", "", history, 1, "No Patient Selected"},
        {std::nullopt, name, history, 1, "No Patient Selected"},
    };
    for (const Row& row : rows) {
        const auto refusal = scheduleRefusal(row.patient, row.drug, row.history, row.tag);
        EXPECT_EQ(refusal.has_value(), row.begin != nullptr);
        EXPECT_TRUE(!refusal || refusal->starts_with(row.begin)) << *refusal;
    }
}

}  // namespace
}  // namespace kpx
