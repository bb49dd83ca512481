#pragma once

#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kpx {

/// What the form of tab 1 shows at the moment the user presses Add or Change.
struct EntryForm {
    // The names; none while a pop-up stands on its last item (no name) or on nothing.
    std::optional<std::string> patient, pharmacy, drug, prescriber;
    std::string rxNumber, daysSupply, cost, initialRefills, note;
    Date dispenseDate, expirationDate;
    // The chosen titles; none when nothing is selected.
    std::optional<std::string> takeNumber, drugTypeOrMeasure, everyInterval, whenToTake, fillType;
};

/// The form's values, once they passed the checks.
struct InputArray {
    std::string patient, pharmacy, drug, prescriber;
    std::string rxNumber;
    std::int64_t daysSupply = 0;
    std::string cost;  ///< as typed
    std::int64_t initialRefills = 0;
    std::int64_t refillsRemaining = 0;
};

enum class FormField { Patient, Pharmacy, Drug, Prescriber, RxNumber, DaysSupply, DispenseDate, ExpirationDate };

/// A refused form: what to say and which control to go to.
struct InputRefusal {
    std::string title;
    std::string message;
    FormField focus = FormField::Patient;
};

/// Runs every check over the form. When several fail the last one is reported (see behaviours). Otherwise fills `input`
/// (all but the refills remaining).
std::optional<InputRefusal> inputFieldsSupplied(const EntryForm& form, InputArray& input,
                                                const Environment& environment, const LocalizedStrings& localized);

}  // namespace kpx
