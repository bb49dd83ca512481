#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// Whether every byte is below 0x80.
bool isAscii(std::string_view text);

/// Well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isValidUtf8(std::string_view text);

/// Appends one UTF-16 unit to a UTF-8 text. A high surrogate goes in as its three-byte form; a low one
/// that follows it takes its place by the four-byte form of both.
void appendUtf16Unit(std::string& text, std::uint16_t unit);

/// UTF-16 bytes as UTF-8, unpaired surrogates in their three-byte form. Null for an odd number of bytes.
std::optional<std::string> utf8FromUtf16(std::string_view bytes, bool bigEndian);

/// The number of UTF-16 units of a text, read as codePoints() does.
std::size_t utf16Length(std::string_view text);

/// The text in big-endian UTF-16, read as codePoints() does.
std::string utf16FromUtf8(std::string_view text);

}  // namespace kpx
