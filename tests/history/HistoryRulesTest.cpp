#include "core/Keys.h"
#include "history/ChangeAndDelete.h"
#include "history/HistoryPredicates.h"
#include "history/HistoryRecord.h"
#include "history/RefillAccounting.h"
#include "region/DateConversion.h"
#include "region/DateUtilities.h"

#include <gtest/gtest.h>
#include <vector>

namespace kpx {
namespace {

Record fill(const char* patient, const char* pharmacy, const char* rxNumber, const char* fillType, int remaining,
            const char* dispensed = "20240105") {
    return Record{{MHPatientKey, patient},
                  {MHPharmacyKey, pharmacy},
                  {MHDrugKey, "Lisinopril"},
                  {MHPrescriberKey, "Dr. Lee"},
                  {MHRxNumberKey, rxNumber},
                  {MHDaysSupplyKey, 30},
                  {MHTotalCostKey, "12.50"},
                  {MHRefillsKey, 2},
                  {MHRefillsRemainKey, remaining},
                  {MHDispenseDateKey, dispensed},
                  {MHExpireDateKey, "20250105"},
                  {MHTakeNbrKey, 1},
                  {MHDrugTypeMeasureKey, "tablet"},
                  {MHEveryIntervalKey, 1},
                  {MHWhenToTakeDrugKey, "at bedtime"},
                  {MHFillTypeKey, fillType}};
}

InputArray inputOf(const char* patient, const char* pharmacy, const char* rxNumber) {
    InputArray input;
    input.patient = patient;
    input.pharmacy = pharmacy;
    input.drug = "Another drug";
    input.prescriber = "Dr. Lee";
    input.rxNumber = rxNumber;
    input.daysSupply = 30;
    input.initialRefills = 2;
    return input;
}

struct AdditionRow {
    const char* what;
    InputArray input;
    const char* fillType;
    const char* refusal;  // null when it is added
    std::int64_t remaining;
};

TEST(RefillAccounting, DecidesOverAnAddition) {
    const Records history = {fill("Ann", "Corner", "100", fillTypeInitial, 1),
                             fill("Ann", "Corner", "200", fillTypeInitial, 0),
                             fill("Ann", "Corner", "100", fillTypeRefill, 1)};
    const std::vector<AdditionRow> rows = {
        {"a second initial, whatever its drug", inputOf("Ann", "Corner", "100"), fillTypeInitial,
         "Rx Number: \"100\"\rfor: Ann\rat: Corner\rexists already in Prescription History", 0},
        {"the same number at another pharmacy", inputOf("Ann", "Market", "100"), fillTypeInitial, nullptr, 2},
        {"the same number of another patient", inputOf("ann", "Corner", "100"), fillTypeInitial, nullptr, 2},
        {"a refill", inputOf("Ann", "Corner", "100"), fillTypeRefill, nullptr, 0},
        {"a refill without an initial fill", inputOf("Bob", "Corner", "100"), fillTypeRefill,
         "Refills cannot be added until an 'initial' prescription is added for\rRx Number: \"100\"\r", 0},
        {"no refills left", inputOf("Ann", "Corner", "200"), fillTypeRefill, "Refill not added\rfor Rx Number: \"200\"",
         0},
        {"no fill type counts as a refill", inputOf("Ann", "Corner", "200"), "",
         "Refill not added\rfor Rx Number: \"200\"", 0},
    };
    for (const AdditionRow& row : rows) {
        SCOPED_TRACE(row.what);
        const auto decision = planAddition(history, row.input, row.fillType, LocalizedStrings());
        if (row.refusal) {
            ASSERT_TRUE(std::holds_alternative<AddRefusal>(decision));
            EXPECT_EQ(std::get<AddRefusal>(decision).title, row.refusal);
        } else {
            ASSERT_TRUE(std::holds_alternative<AddPlan>(decision));
            EXPECT_EQ(std::get<AddPlan>(decision).refillsRemaining, row.remaining);
        }
    }
}

TEST(RefillAccounting, ARecordWithoutTheCountHasNoRefillsLeft) {
    Record initial = fill("Ann", "Corner", "100", fillTypeInitial, 5);
    initial.remove(MHRefillsRemainKey);
    const auto decision = planAddition({initial}, inputOf("Ann", "Corner", "100"), fillTypeRefill, LocalizedStrings());
    EXPECT_EQ(std::get<AddRefusal>(decision).message, "No Remaining Refills");
}

TEST(HistoryRecord, ARowTurnsBackIntoItsRecordInEveryRegion) {
    Record full = fill("Ann", "Corner", "100", fillTypeInitial, 1);
    full.set(MHReceiptKey, Data({1, 2, 3}));
    full.set(MHNoteKey, "");
    Record cheap = fill("Ann", "Corner", "100", fillTypeInitial, 1);
    cheap.set(MHTotalCostKey, ".50");
    const Records records = {fill("Bob", "Corner", "9", fillTypeRefill, 0), full, cheap};
    for (const char* locale : {"en_US", "de_DE", "de_CH", "fr_FR", "ar_EG", "th_TH"}) {
        SCOPED_TRACE(locale);
        const Environment environment{{}, Region(locale, "America/New_York")};
        Records rows;
        populateMaintArray(records, rows, environment);
        ASSERT_EQ(rows.size(), records.size());
        for (std::size_t index = 0; index < rows.size(); ++index) {
            EXPECT_EQ(copyDictForSearchingDataFileArray(rows[index], environment), records[index]);
        }
    }
}

TEST(HistoryRecord, WhatTheRecordLacksTheRowLacks) {
    const Environment environment{{}, Region("en_US", "UTC")};
    Records rows;
    populateMaintArray({Record{{MHPatientKey, "Ann"}, {MHTotalCostKey, "no number"}}}, rows, environment);
    EXPECT_EQ(rows.at(0), (Record{{"patient", "Ann"}}));
}

TEST(HistoryRecord, AnUnchosenDosageKeepsWhatWasStored) {
    const Record stored = fill("Ann", "Corner", "100", fillTypeInitial, 1);
    Record changed = stored;
    changed.set(MHTakeNbrKey, 0);
    changed.set(MHWhenToTakeDrugKey, "with food");
    EntryForm form;
    form.whenToTake = "with food";
    keepUnchosenDosage(form, stored, changed);
    EXPECT_EQ(changed.integer(MHTakeNbrKey), 1);
    EXPECT_EQ(changed.text(MHWhenToTakeDrugKey), Text("with food"));
}

TEST(ChangeAndDelete, FindsTheFillAndItsPrescription) {
    const Record initial = fill("Ann", "Corner", "100", fillTypeInitial, 1);
    const Record refill = fill("Ann", "Corner", "100", fillTypeRefill, 1, "20240205");
    const Records history = {fill("Bob", "Corner", "100", fillTypeInitial, 1), initial, refill, refill};
    EXPECT_EQ(copyFilterArrayAndRetain(history, refill), 2U);
    EXPECT_EQ(copyFilterBasedOnRxPharmPatient(history, refill), (Records{initial, refill, refill}));
    EXPECT_EQ(positionsOfGroup(history, {initial, refill, refill}), (std::vector<std::size_t>{1, 2, 3}));
    EXPECT_EQ(positionsOfGroup(history, {initial, refill, refill, refill}), std::nullopt);
    EXPECT_EQ(positionsOfGroup(history, {}), std::vector<std::size_t>());
    EXPECT_FALSE(copyFilterArrayAndRetain(history, fill("Ann", "Corner", "100", fillTypeRefill, 1, "20240206")));
    Records left = history;
    removePositions(left, {1, 2, 3});
    EXPECT_EQ(left, Records{history[0]});
}

TEST(ChangeAndDelete, ShowControlsFollowTheLowByte) {
    EXPECT_FALSE(showControlsEnabledAfterDelete(0));
    EXPECT_TRUE(showControlsEnabledAfterDelete(255));
    EXPECT_FALSE(showControlsEnabledAfterDelete(256));
    EXPECT_TRUE(showControlsEnabledAfterDelete(257));
    EXPECT_FALSE(showControlsEnabledAfterDelete(512));
}

struct FilterRow {
    const char* what;
    std::optional<std::string> patient, drug;
    int scriptType;
    std::vector<int> kept;
};

TEST(HistoryPredicates, NarrowByNamesTypeAndDate) {
    const Environment environment{{}, Region("en_US", "America/New_York")};
    Records history = {fill("Ann", "Corner", "1", fillTypeInitial, 1, "20240101"),
                       fill("Ann", "Corner", "1", fillTypeRefill, 1, "20240201"),
                       fill("Änn \"A\"", "Corner", "2", fillTypeInitial, 1, "20240301"),
                       fill("back\\slash", "Corner", "3", fillTypeInitial, 1, "20240301")};
    history[2].set(MHDrugKey, "%@");
    Record undated = fill("Ann", "Corner", "4", fillTypeInitial, 1);
    undated.remove(MHDispenseDateKey);
    history.push_back(undated);
    arrayToNSDate(history, MHDispenseDateKey, environment);
    const Date begin = dateFromYear(2024, 1, 1, environment);
    const Date end = dateFromYear(2024, 3, 1, environment);
    const std::vector<FilterRow> rows = {
        {"all", "All", "All", scriptTypeAll, {0, 1, 2, 3}},
        {"no drug chosen", "Ann", std::nullopt, scriptTypeNone, {0, 1}},
        {"no patient chosen", std::nullopt, "All", scriptTypeNone, {}},
        {"initial", "All", "All", scriptTypeInitial, {0, 2, 3}},
        {"refill", "All", "All", scriptTypeRefill, {1}},
        {"a name with a double quote", "Änn \"A\"", "All", scriptTypeAll, {}},
        {"a name that would close its literal", "x\" OR MHPatientKey LIKE \"*", "All", scriptTypeAll, {}},
        {"a name that would parse as further clauses", "Ann\" AND MHPatientKey == \"Ann", "All", scriptTypeAll, {}},
        {"a drug that would", "All", "Lisinopril\" AND MHPatientKey == \"Ann", scriptTypeAll, {}},
        {"a name with a backslash", "back\\slash", "All", scriptTypeAll, {3}},
        {"a drug named like a placeholder", "All", "%@", scriptTypeAll, {2}},
        {"case counts", "ann", "All", scriptTypeAll, {}},
    };
    for (const FilterRow& row : rows) {
        SCOPED_TRACE(row.what);
        Records expected;
        for (const int index : row.kept) {
            expected.push_back(history[static_cast<std::size_t>(index)]);
        }
        EXPECT_EQ(
            filteredRecords(history, copyPredicateString(row.patient, row.drug, begin, end, row.scriptType, "All")),
            expected);
    }
}

TEST(HistoryPredicates, NamesAsArgumentsMatchWhateverTheyHold) {
    const Records history = {fill("Änn \"A\"", "Corner", "2", fillTypeInitial, 1),
                             fill("Ann", "Corner", "1", fillTypeRefill, 1)};
    EXPECT_EQ(filteredRecords(history, copyPredicateString(std::string("Änn \"A\""), std::nullopt)),
              Records{history[0]});
    EXPECT_EQ(filteredRecords(history, copyPredicateString(std::nullopt, std::nullopt)), history);
}

}  // namespace
}  // namespace kpx
