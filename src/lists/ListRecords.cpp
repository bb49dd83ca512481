#include "lists/ListRecords.h"

#include "core/PopUpTitles.h"
#include "core/Sorting.h"

#include <algorithm>

namespace kpx {

namespace {

void sortBy(const std::string& key, Records& records, const Environment& environment) {
    sortByDescriptors(records, {{key, true, Comparison::LocalizedCaseInsensitive}}, environment);
}

auto recordNamed(const ListKind& kind, const Records& records, const std::string& name) {
    return std::ranges::find_if(records, [&](const Record& record) {
        const auto recordName = record.text(kind.nameKey);
        return recordName && recordName->string() == name;
    });
}

}  // namespace

void populateSheetArray(const ListKind& kind, const Records& records, Records& tvArray) {
    for (const Record& record : records) {
        Record row;
        for (const auto& [column, key] : kind.columns) {
            if (const Value* value = record.find(key)) {
                row.append(column, *value);
            } else if (kind.rowStopsAtMissingValue) {
                break;
            }
        }
        tvArray.push_back(std::move(row));
    }
}

void populateDrugSheetArray(const Records& records, Records& tvArray) {
    populateSheetArray(drugList(), records, tvArray);
}

void populatepatientSheetArray(const Records& records, Records& tvArray) {
    populateSheetArray(patientList(), records, tvArray);
}

void populatepharmacySheetArray(const Records& records, Records& tvArray) {
    populateSheetArray(pharmacyList(), records, tvArray);
}

void populatePrescriberSheetArray(const Records& records, Records& tvArray) {
    populateSheetArray(prescriberList(), records, tvArray);
}

void sortByName(const ListKind& kind, Records& records, const Environment& environment) {
    sortBy(kind.nameKey, records, environment);
}

void sortRowsByName(const ListKind& kind, Records& rows, const Environment& environment) {
    sortBy(kind.nameColumn(), rows, environment);
}

bool requiredFieldsSupplied(const ListKind& kind, const std::vector<std::string>& fields) {
    return std::all_of(fields.begin() + 1, fields.begin() + 1 + kind.requiredFields,
                       [](const std::string& field) { return !field.empty(); });
}

bool listHolds(const ListKind& kind, const Records& records, const std::string& name) {
    return recordNamed(kind, records, name) != records.end();
}

Record recordFromFields(const ListKind& kind, const std::vector<std::string>& fields) {
    Record record;
    for (std::size_t tag = 1; tag < kind.keysByTag.size(); ++tag) {
        record.set(kind.keysByTag[tag], fields[tag]);
    }
    return record;
}

bool removeRecordNamed(const ListKind& kind, Records& records, const std::string& name) {
    const auto record = recordNamed(kind, records, name);
    if (record == records.end()) {
        return false;
    }
    records.erase(record);
    return true;
}

bool historyUses(const ListKind& kind, const Records& history, const std::string& name) {
    return copyDictContainingTitle(name, kind.historyKey, history) != nullptr;
}

ListWarning historyUseWarning(const ListKind& kind, const std::string& name, const LocalizedStrings& localized) {
    const std::string& word = kind.kindWord;
    return {
        localized.sentence(
            kind.stillUsedMessage, {name},
            formatted(localized("The %@ name \"%@\" was deleted as requested but is not recommended"), {word, name}) +
                localized(" because it is used in prescription maintenance data.") +
                formatted(localized("\r\rRecommend re-adding the %@ just deleted to avoid data integrity issues."),
                          {word})),
        localized.sentence(
            kind.stillUsedTitle, {},
            formatted(localized("Deleting a %@ "), {word}) +
                formatted(localized("creates a mismatch between the %@ data and the prescription maintenance data."),
                          {word}))};
}

}  // namespace kpx
