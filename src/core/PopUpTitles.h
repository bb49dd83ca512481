#pragma once

#include "values/Record.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

/// The distinct values under the key as titles, in the order of their first occurrence. Only the first
/// record is asked whether it has a value at all: if it has none, the result is empty;
/// later records without one are skipped; see behaviours.
std::vector<std::string> copyUniqueKey(std::string_view key, const Records& records);

/// The first record whose value under the key equals the title exactly; null when none does.
const Record* copyDictContainingTitle(std::string_view title, std::string_view key, const Records& records);

/// A key and the value it must equal.
struct KeyValue {
    std::string_view key;
    std::string_view value;
};

/// The first record that equals all four values exactly, or an empty record. A value that holds a
/// double quote cannot be matched: it would end its own literal in the predicate text.
Record copyFindDictInArray(const Records& records, KeyValue first, KeyValue second, KeyValue third, KeyValue fourth);

}  // namespace kpx
