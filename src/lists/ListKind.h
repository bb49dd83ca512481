#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kpx {

/// One of the four reference lists, described as data: everything in which they differ. What is done
/// with a list is the same for all.
struct ListKind {
    std::string kindWord;  ///< in messages
    std::string_view fileName;
    std::string nameKey;     ///< identifies a record
    std::string historyKey;  ///< under which the history refers to it
    std::string maintainTitle;
    /// The keys by the tags of the sheet's fields; position 0 is empty.
    std::vector<std::string> keysByTag;
    /// Column identifier and record key, in the order in which a row is built.
    std::vector<std::pair<std::string, std::string>> columns;
    /// Whether a row stops at the first value that the record lacks; the drug list sets each on its own.
    bool rowStopsAtMissingValue = true;
    /// How many of the first fields must be filled in on adding.
    int requiredFields = 1;
    /// Whether the table is in name order after an add; the others then show the file's order.
    bool sortedAfterAdd = false;
    std::string missingDataTitle;
    std::string missingDataMessage;
    std::string duplicateTitle;
    // Whole sentences with the name as their argument, asked for before those that any kind's word is put into.
    std::string nameFixedTitle;
    std::string stillUsedMessage;
    std::string stillUsedTitle;

    int endTag() const { return static_cast<int>(keysByTag.size()) - 1; }
    const std::string& nameColumn() const { return columns.front().first; }
};

const ListKind& drugList();
const ListKind& patientList();
const ListKind& pharmacyList();
const ListKind& prescriberList();

}  // namespace kpx
