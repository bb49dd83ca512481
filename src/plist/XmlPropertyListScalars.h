#pragma once

#include "values/Record.h"

#include <optional>
#include <string_view>

namespace kpx {

// The contents of an XML property list's elements. Blanks around them do not count; null when the text
// is not wholly a value of its kind.

/// Decimal, or hexadecimal after 0x; a sign may stand before either. Null beyond 128 bits with the
/// sign.
std::optional<Value> integerFromXml(std::string_view text);

/// A decimal number with "." and an exponent, nan, inf or infinity. One beyond the doubles is the
/// nearest of them: infinity, or zero.
std::optional<double> realFromXml(std::string_view text);

/// "2024-03-31T08:15:00Z", of the Gregorian calendar also before its introduction. Smaller units may be
/// left out: "2024-03-31Z" is its midnight.
std::optional<Date> dateFromXml(std::string_view text);

/// Base64 with blanks and line ends anywhere.
std::optional<Data> dataFromXml(std::string_view text);

/// Only blanks and line ends.
bool isBlank(std::string_view text);

}  // namespace kpx
