#include "history/InputFields.h"
#include "region/DateUtilities.h"

#include <gtest/gtest.h>
#include <functional>
#include <vector>

namespace kpx {
namespace {

const Region newYork("en_US", "America/New_York");
const Environment noon{dateAtTimeOfDay(dateFromYear(2024, 3, 5, {{}, newYork}), 12, 0, 0, {{}, newYork}), newYork};

EntryForm goodForm() {
    EntryForm form;
    form.patient = "Ann";
    form.pharmacy = "Corner";
    form.drug = "Lisinopril";
    form.prescriber = "Dr. Lee";
    form.rxNumber = "07";
    form.daysSupply = "30";
    form.cost = "12.5";
    form.initialRefills = "2";
    form.dispenseDate = noon.now;
    form.expirationDate = noon.now;
    return form;
}

struct Row {
    const char* what;
    std::function<void(EntryForm&)> spoil;
    const char* title;
    FormField focus;
};

TEST(InputFields, TheLastFailingCheckWins) {
    const std::vector<Row> rows = {
        {"no patient", [](EntryForm& form) { form.patient.reset(); }, "Patient name is required", FormField::Patient},
        {"no patient, no drug",
         [](EntryForm& form) {
             form.patient.reset();
             form.drug.reset();
         },
         "Drug name is required", FormField::Drug},
        {"no pharmacy", [](EntryForm& form) { form.pharmacy.reset(); }, "Pharmacy name is required",
         FormField::Pharmacy},
        {"no prescriber", [](EntryForm& form) { form.prescriber.reset(); }, "Prescriber name is required",
         FormField::Prescriber},
        {"Rx number of one character", [](EntryForm& form) { form.rxNumber = "7"; },
         "'Prescription number' is required", FormField::RxNumber},
        {"Rx number of one character and two bytes", [](EntryForm& form) { form.rxNumber = "é"; },
         "'Prescription number' is required", FormField::RxNumber},
        {"days supply 0", [](EntryForm& form) { form.daysSupply = "0"; }, "'Days supply' is required",
         FormField::DaysSupply},
        {"days supply empty", [](EntryForm& form) { form.daysSupply = ""; }, "'Days supply' is required",
         FormField::DaysSupply},
        {"dispensed later today",
         [](EntryForm& form) {
             form.dispenseDate = noon.now.addingSeconds(1);
             form.expirationDate = form.dispenseDate;
         },
         "Dispense date: 3/5/24 is a future date and invalid", FormField::DispenseDate},
        {"expired before dispensed", [](EntryForm& form) { form.expirationDate = noon.now.addingSeconds(-86400); },
         "Invalid Dispense: 3/5/24 & Expiration: 3/4/24 date combination", FormField::ExpirationDate},
        {"everything wrong",
         [](EntryForm& form) {
             form = EntryForm();
             form.dispenseDate = noon.now.addingSeconds(86400);
             form.expirationDate = noon.now;
         },
         "Invalid Dispense: 3/6/24 & Expiration: 3/5/24 date combination", FormField::ExpirationDate},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EntryForm form = goodForm();
        row.spoil(form);
        InputArray input;
        const auto refusal = inputFieldsSupplied(form, input, noon, LocalizedStrings());
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->title, row.title);
        EXPECT_EQ(refusal->focus, row.focus);
    }
}

TEST(InputFields, AGoodFormFillsTheInput) {
    InputArray input;
    ASSERT_FALSE(inputFieldsSupplied(goodForm(), input, noon, LocalizedStrings()));
    EXPECT_EQ(input.patient, "Ann");
    EXPECT_EQ(input.rxNumber, "07");
    EXPECT_EQ(input.daysSupply, 30);
    EXPECT_EQ(input.cost, "12.5");
    EXPECT_EQ(input.initialRefills, 2);
}

}  // namespace
}  // namespace kpx
