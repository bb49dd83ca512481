#pragma once

#include "history/InputFields.h"
#include "region/Environment.h"
#include "values/Record.h"

namespace kpx {

/// The record of one fill, with its sixteen mandatory keys, from the checked values and the form. A
/// dosage title that is not chosen is stored as 0 or empty.
Record copyDictFromInputFieldsArray(const InputArray& input, const EntryForm& form, const Environment& environment);

/// Where the form has no dosage title chosen because its pop-up does not offer the stored one, the changed
/// record keeps what was stored: changing the cost must not lose the dosage.
void keepUnchosenDosage(const EntryForm& form, const Record& stored, Record& changed);

/// Appends one tab-1 row per record, in record order: dates as dates, the cost as a number, what the
/// record lacks is absent.
void populateMaintArray(const Records& records, Records& tvArray, const Environment& environment);

/// The inverse: the stored record that a tab-1 row came from, receipt and note only if it has them.
Record copyDictForSearchingDataFileArray(const Record& row, const Environment& environment);

}  // namespace kpx
