#pragma once

#include "history/InputFields.h"
#include "values/Record.h"

#include <optional>
#include <vector>

namespace kpx {

/// Where the one fill that a search record describes stands: the first record of the same Rx number,
/// pharmacy, patient, fill type and dispense date. None when it is not there.
std::optional<std::size_t> copyFilterArrayAndRetain(const Records& history, const Record& usingTableRowDict);

/// The whole prescription of a search record: every record of the same Rx number, pharmacy and patient, identical
/// ones included, in order.
Records copyFilterBasedOnRxPharmPatient(const Records& history, const Record& usingTableRowDict);

/// Where the records of a group stand in the history, in its order, each at a place of its own. None when one of
/// them is not found.
std::optional<std::vector<std::size_t>> positionsOfGroup(const Records& history, const Records& group);

/// Removes the records at the positions. REQUIRES: ascending positions.
void removePositions(Records& history, const std::vector<std::size_t>& positions);

/// Whether the form differs from the stored record in a field that ties the fills of a prescription
/// together: names, Rx number, days supply, initial refills.
bool hasWrongDataBeenChanged(const InputArray& input, const Record& comparingDict);

/// Whether the filter's controls are on after a delete: the low byte of the count as a truth value, so
/// they are off when no record is left and when exactly 256, 512, … are; see behaviours.
constexpr bool showControlsEnabledAfterDelete(std::size_t recordsLeft) { return (recordsLeft & 0xff) != 0; }

}  // namespace kpx
