#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kpx {

/// What a UTF-8 text begins with.
struct Character {
    char32_t code = 0xFFFD;
    std::size_t length = 1;  ///< in bytes
    bool valid = false;      ///< if not, it is one byte that belongs to no character
};

/// The first character. A surrogate in its three-byte form is one too, as it can stand unpaired in the UTF-16
/// texts of a property list. REQUIRES: the text is not empty.
Character firstCharacter(std::string_view text);

/// The code points of a UTF-8 text, read as firstCharacter() does; U+FFFD for what is not valid.
std::u32string codePoints(std::string_view text);

/// Length in characters, not bytes.
std::size_t characterCount(std::string_view text);

/// The text without its last character; empty stays empty.
std::string withoutLastCharacter(std::string_view text);

/// The text with every decimal digit, of whatever script, as the Latin one of the same value.
std::string withLatinDigits(std::string_view text);

/// How a text begins, in one line of at most that many characters, the last of them an ellipsis where something is
/// left out: for a text from outside that is quoted. Line breaks and other control characters are blanks, those at
/// its end are dropped.
std::string beginningInOneLine(std::string_view text, std::size_t characters);

/// Bytes in the Mac OS Roman encoding as UTF-8.
std::string textFromMacOSRoman(std::string_view bytes);

}  // namespace kpx
