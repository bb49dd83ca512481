#include "plist/PropertyListUnicode.h"

#include "values/Unicode.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstring>

namespace kpx {
namespace {

std::uint8_t byteAt(std::string_view text, std::size_t index) { return static_cast<std::uint8_t>(text[index]); }

/// REQUIRES: at most U+10FFFF; a surrogate goes in as its three-byte form.
void appendCharacter(std::string& text, char32_t code) {
    char bytes[U8_MAX_LENGTH];
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, code);
    text.append(bytes, length);
}

/// The high surrogate whose three-byte form the text ends with, 0 when there is none.
char32_t trailingHighSurrogate(std::string_view text) {
    if (text.size() < 3 || byteAt(text, text.size() - 3) != 0xED) {
        return 0;
    }
    const Character last = firstCharacter(text.substr(text.size() - 3));
    return last.valid && last.length == 3 && U16_IS_LEAD(last.code) ? last.code : 0;
}

}  // namespace

bool isAscii(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::size_t index = 0;
    std::uint64_t seen = 0;
    for (; index + 8 <= text.size(); index += 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, text.data() + index, 8);
        seen |= eight;
    }
    for (; index < text.size(); ++index) {
        seen |= byteAt(text, index);
    }
    return (seen & highBits) == 0;
}

bool isValidUtf8(std::string_view text) {
    std::size_t index = 0;
    UChar32 code = 0;
    while (index < text.size() && code >= 0) {
        U8_NEXT(text.data(), index, text.size(), code);
    }
    return code >= 0;
}

void appendUtf16Unit(std::string& text, std::uint16_t unit) {
    if (U16_IS_TRAIL(unit)) {
        if (const char32_t high = trailingHighSurrogate(text)) {
            text.resize(text.size() - 3);
            appendCharacter(text, static_cast<char32_t>(U16_GET_SUPPLEMENTARY(high, unit)));
            return;
        }
    }
    appendCharacter(text, unit);
}

std::optional<std::string> utf8FromUtf16(std::string_view bytes, bool bigEndian) {
    if (bytes.size() % 2 != 0) {
        return std::nullopt;
    }
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t index = 0; index < bytes.size(); index += 2) {
        const unsigned high = byteAt(bytes, index + (bigEndian ? 0 : 1));
        const unsigned low = byteAt(bytes, index + (bigEndian ? 1 : 0));
        appendUtf16Unit(text, static_cast<std::uint16_t>(high << 8 | low));
    }
    return text;
}

std::size_t utf16Length(std::string_view text) {
    const std::u32string codes = codePoints(text);
    return codes.size() +
           static_cast<std::size_t>(std::ranges::count_if(codes, [](char32_t code) { return code > 0xFFFF; }));
}

std::string utf16FromUtf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(2 * text.size());
    const auto append = [&](char32_t unit) {
        bytes.push_back(static_cast<char>(unit >> 8));
        bytes.push_back(static_cast<char>(unit));
    };
    for (const char32_t code : codePoints(text)) {
        if (code > 0xFFFF) {
            append(U16_LEAD(code));
            append(U16_TRAIL(code));
        } else {
            append(code);
        }
    }
    return bytes;
}

}  // namespace kpx
