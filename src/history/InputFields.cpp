#include "history/InputFields.h"

#include "region/DateUtilities.h"
#include "values/NumberText.h"
#include "values/Unicode.h"

namespace kpx {

namespace {

constexpr char enterAndTryAgain[] = "Please enter it and try again, Thank you";

}  // namespace

std::optional<InputRefusal> inputFieldsSupplied(const EntryForm& form, InputArray& input,
                                                const Environment& environment, const LocalizedStrings& localized) {
    std::optional<InputRefusal> refusal;
    if (!form.patient) {
        refusal = {localized("Patient name is required"),
                   localized("Please select a patient name and try again, Thank you"), FormField::Patient};
    }
    if (!form.pharmacy) {
        refusal = {localized("Pharmacy name is required"), localized(enterAndTryAgain), FormField::Pharmacy};
    }
    if (!form.drug) {
        refusal = {localized("Drug name is required"), localized(enterAndTryAgain), FormField::Drug};
    }
    if (!form.prescriber) {
        refusal = {localized("Prescriber name is required"), localized(enterAndTryAgain), FormField::Prescriber};
    }
    // One character alone counts as missing too: no pharmacy gives out such a number.
    if (characterCount(form.rxNumber) < 2) {
        refusal = {localized("'Prescription number' is required"), localized(enterAndTryAgain), FormField::RxNumber};
    }
    const std::int64_t daysSupply = leadingInteger(form.daysSupply);
    if (daysSupply < 1) {
        refusal = {localized("'Days supply' is required"), localized(enterAndTryAgain), FormField::DaysSupply};
    }
    // The titles that hold dates are looked up with numbered placeholders only: a table may say them in another order.
    const std::string dispensed = shortStyleFromDate(form.dispenseDate, environment);
    if (environment.now < form.dispenseDate) {
        refusal = {localized.sentence("Dispense date: %1$@ is a future date and invalid", {dispensed},
                                      formatted("Dispense date: %@ is a future date and invalid", {dispensed})),
                   localized("because dispense date must be either today's date or in the past.  Please adjust "
                             "dispense date appropriately and try again."),
                   FormField::DispenseDate};
    }
    if (form.dispenseDate > form.expirationDate) {
        const std::string expires = shortStyleFromDate(form.expirationDate, environment);
        refusal = {localized.sentence(
                       "Invalid Dispense: %1$@ & Expiration: %2$@ date combination", {dispensed, expires},
                       formatted("Invalid Dispense: %@ & Expiration: %@ date combination", {dispensed, expires})),
                   localized("because expiration date must be chronologically after the dispense date. Please adjust "
                             "the dates appropriately and try again."),
                   FormField::ExpirationDate};
    }
    if (refusal) {
        return refusal;
    }
    input.patient = *form.patient;
    input.pharmacy = *form.pharmacy;
    input.drug = *form.drug;
    input.prescriber = *form.prescriber;
    input.rxNumber = form.rxNumber;
    input.daysSupply = daysSupply;
    input.cost = form.cost;
    input.initialRefills = leadingInteger(form.initialRefills);
    return std::nullopt;
}

}  // namespace kpx
