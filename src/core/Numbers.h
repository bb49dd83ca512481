#pragma once

#include "core/Environment.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// The number a text begins with, read the same in every locale: blanks, a sign, digits with "." as the
/// decimal point, an exponent. 0 when there is none. No hexadecimal, no "inf", no "nan".
double leadingNumber(std::string_view text);

/// The decimal integer a text begins with (after blanks and a sign); 0 when there is none; the nearest
/// representable one on overflow.
std::int64_t leadingInteger(std::string_view text);

/// Whether the text is a plain whole number: digits only, at least one.
bool isItaNumber(std::string_view text);

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

/// A number in a decimal-format pattern with the locale's symbols, as "###,###,###.00" on tab 1.
std::string copyFormatStringForTextField(double number, std::string_view pattern, const Environment& environment);

/// Pattern "¤###,###,##0.00" with the locale's currency symbol: "$1,234.50".
std::string formatCurrency(double value, const Environment& environment);

/// The number of a table row's cost column for a stored cost text. Stored texts are read with "." in
/// every locale; a text that is not wholly a number has no row value.
std::optional<double> rowCostFromStoredText(std::string_view text);

/// The locale's decimal separator, such as "." or ",".
std::string decimalSeparator(const Environment& environment);

}  // namespace kpx
