#pragma once

#include "region/Environment.h"
#include "values/Record.h"

#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// Removes every occurrence of the locale's grouping separator and of its currency symbol. An empty
/// separator removes nothing.
std::string removingGroupingAndCurrency(std::string_view text, const Environment& environment);

/// The stored form of a cost: pattern "######.00", always with "." whatever the locale, so that files
/// stay readable everywhere. Rounded half-even on the shortest decimal text of the number.
///
/// | value  | text      |
/// |--------|-----------|
/// | 1234.5 | "1234.50" |
/// | 0.5    | ".50"     |
/// | 0.125  | ".12"     |
/// | 0      | ".00"     |
std::string formatCostStrings(double value);

/// A typed cost in its stored form; nothing given counts as 0.
std::string cleanFormatCostStr(std::optional<std::string_view> text, const Environment& environment);

/// A number in a decimal-format pattern with the locale's symbols.
std::string copyFormatStringForTextField(double number, std::string_view pattern, const Environment& environment);

/// A cost as fields and tables show it: pattern "###,###,###.00" with the locale's symbols.
std::string formatShownCost(double value, const Environment& environment);
/// The same of a table row's cost, which is a number; what a hand-edited file holds otherwise is shown as it is.
std::string formatShownCost(const Value& cost, const Environment& environment);

/// Pattern "¤###,###,##0.00" with the locale's currency symbol: "$1,234.50".
std::string formatCurrency(double value, const Environment& environment);

/// The number of a table row's cost column for a stored cost text. Stored texts are read with "." in
/// every locale; a text that is not wholly a number has no row value.
std::optional<double> rowCostFromStoredText(std::string_view text);

/// The locale's decimal separator, such as "." or ",".
std::string decimalSeparator(const Environment& environment);

}  // namespace kpx
