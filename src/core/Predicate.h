#pragma once

#include "values/Record.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace kpx {

/// A test over records, parsed from format text.
///
///     comparison  := operand ("==" | "LIKE[cd]" | ">=" | "<=") operand
///     predicate   := comparison ("AND" comparison)*
///     operand     := key | quoted literal | number | "%@" (an argument's value) | "%K" (an argument naming a key)
///
/// "==" is exact, case-sensitive equality. LIKE[cd] is a wildcard match ("*" any run, "?" one character) that
/// ignores case and diacritics; what is no text matches "*" only. ">=" and "<=" order dates, numbers and texts
/// of one kind. A record without a value under the key, or with one of another kind, does not match. What
/// stands between quotes is taken as it is, "%@" and backslashes included.
class Predicate {
public:
    /// Null for a text that does not parse, or one whose arguments do not suffice.
    static std::optional<Predicate> withFormat(std::string_view format, std::vector<Value> arguments = {});

    bool matches(const Record& record) const;

private:
    struct Comparison;
    class Parser;

    Predicate() = default;

    std::shared_ptr<const std::vector<Comparison>> m_comparisons;
};

/// The matching records, in their order. A null predicate (one that did not parse) matches nothing.
Records filteredRecords(Records records, const std::optional<Predicate>& predicate);

}  // namespace kpx
