#pragma once

#include "lists/ListKind.h"
#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <string>
#include <vector>

namespace kpx {

/// Appends one table row per record, in file order.
void populateSheetArray(const ListKind& kind, const Records& records, Records& tvArray);
void populateDrugSheetArray(const Records& records, Records& tvArray);
void populatepatientSheetArray(const Records& records, Records& tvArray);
void populatepharmacySheetArray(const Records& records, Records& tvArray);
void populatePrescriberSheetArray(const Records& records, Records& tvArray);

/// Ascending by name with the localised case-insensitive comparison (no natural digits).
void sortByName(const ListKind& kind, Records& records, const Environment& environment);
void sortRowsByName(const ListKind& kind, Records& rows, const Environment& environment);

/// Whether the fields that an add needs are filled in. Not trimmed: a blank is a text.
/// `fields` are the sheet's texts by tag; position 0 is unused.
bool requiredFieldsSupplied(const ListKind& kind, const std::vector<std::string>& fields);

/// Whether a record of the list has that name, exactly.
bool listHolds(const ListKind& kind, const Records& records, const std::string& name);

/// Every key of the list, empty texts included.
Record recordFromFields(const ListKind& kind, const std::vector<std::string>& fields);

/// Removes the first record of that name; whether there was one.
bool removeRecordNamed(const ListKind& kind, Records& records, const std::string& name);

/// Whether the history still uses the name.
bool historyUses(const ListKind& kind, const Records& history, const std::string& name);

/// The warning after deleting a name that the history still uses.
struct ListWarning {
    std::string title;
    std::string message;
};
ListWarning historyUseWarning(const ListKind& kind, const std::string& name, const LocalizedStrings& localized);

}  // namespace kpx
