#pragma once

#include <cstdint>
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

/// The same with a sign before it or without, as far as 64 bits hold it.
bool isWholeNumber(std::string_view text);

}  // namespace kpx
