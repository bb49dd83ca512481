#pragma once

#include "core/Record.h"
#include "history/InputFields.h"

#include <optional>
#include <vector>

namespace kpx {

/// Where the one fill that a search record describes stands: the first record of the same Rx number,
/// pharmacy, patient, fill type and dispense date. None when it is not there.
std::optional<std::size_t> copyFilterArrayAndRetain(const Records& history, const Record& usingTableRowDict);

/// Where the whole prescription of a search record stands: every record of the same Rx number, pharmacy
/// and patient, identical ones included, in order.
std::vector<std::size_t> copyFilterBasedOnRxPharmPatient(const Records& history, const Record& usingTableRowDict);

/// Removes the records at the positions. REQUIRES: ascending positions.
void removePositions(Records& history, const std::vector<std::size_t>& positions);

/// Whether the form differs from the stored record in a field that ties the fills of a prescription
/// together: names, Rx number, days supply, initial refills.
bool hasWrongDataBeenChanged(const InputArray& input, const Record& comparingDict);

/// Whether the filter's controls are on after a delete: the low byte of the count as a truth value, so
/// they are off when no record is left and, deliberately, when exactly 256, 512, … are.
constexpr bool showControlsEnabledAfterDelete(std::size_t recordsLeft) { return (recordsLeft & 0xff) != 0; }

}  // namespace kpx
