#pragma once

#include "region/Environment.h"
#include "values/Record.h"

#include <optional>
#include <string>

namespace kpx {

/// The views of the schedule: the tags of its radio group.
enum class ScheduleMode { LatestFill = 1, WholeHistory = 2, Overdue = 3, Expired = 4 };

/// Why there is no schedule to show, in English; none when there is. The titles are those chosen, `tag` is the radio
/// group's; of several reasons the first counts.
std::optional<std::string> scheduleRefusal(const std::optional<std::string>& patient,
                                           const std::optional<std::string>& drug, const Records& history, int tag);

/// Keeps, of every patient and drug, the latest dispense only; sorts by patient, then drug. The Rx
/// number and pharmacy play no part, so a new prescription of a drug supersedes the old one. Names
/// that differ only in case are different.
void removeDictsWithEarlierDispenseDate(Records& records, const Environment& environment);

/// Keeps what is due and not expired. Due begins at the exact instant of the next fill date; an
/// expiration date of today counts as expired already. A date that a hand-edited record lacks removes
/// nothing, so that the record is seen rather than overlooked.
void overDueOnly(Records& records, const Environment& environment);

/// Keeps what is expired, by the exact instant; also what has no expiration date.
void expiredOnly(Records& records, const Environment& environment);

/// Applies the steps of a view to the narrowed history.
void applyScheduleMode(Records& records, ScheduleMode mode, const Environment& environment);

/// One tab-2 row per record, in order. The next fill date is the dispense date plus days supply × 86400
/// seconds, a plain interval: across a clock change it lands one hour off midnight; see behaviours.
Records copyMaintDueArrayForTVFromFilteredArray(const Records& records, const Environment& environment);

/// Whether a row's cell is drawn in red: a next fill or expiration date that is not later than now.
bool isDueCell(const Record& row, const std::string& column, Date now);

}  // namespace kpx
