#pragma once

#include <string>
#include <string_view>

namespace kpx {

/// The code points of a UTF-8 text; what is not well-formed becomes U+FFFD.
std::u32string codePoints(std::string_view text);

/// Length in characters, not bytes.
std::size_t characterCount(std::string_view text);

/// The text without its last character; empty stays empty.
std::string withoutLastCharacter(std::string_view text);

/// Bytes in the Mac OS Roman encoding as UTF-8.
std::string textFromMacOSRoman(std::string_view bytes);

}  // namespace kpx
