#pragma once

#include "core/Environment.h"
#include "core/Record.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kpx {

/// What the form of tab 1 shows at the moment the user presses Add or Change.
struct EntryForm {
    // The names, none while a pop-up stands on its last item (no name) or on nothing.
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

}  // namespace kpx
