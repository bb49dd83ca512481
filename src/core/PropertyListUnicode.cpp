#include "core/PropertyListUnicode.h"

#include <cstring>

namespace kpx {
namespace {

constexpr bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

std::uint8_t byteAt(std::string_view text, std::size_t index) { return static_cast<std::uint8_t>(text[index]); }

bool isContinuation(std::string_view text, std::size_t index) {
    return index < text.size() && (byteAt(text, index) & 0xC0) == 0x80;
}

struct Character {
    char32_t code = 0xFFFD;
    std::size_t length = 1;
    bool valid = false;
};

/// The character a text begins with, surrogates included.
Character firstCharacter(std::string_view text) {
    const std::uint8_t first = byteAt(text, 0);
    if (first < 0x80) {
        return {first, 1, true};
    }
    std::size_t length = 0;
    char32_t code = 0;
    char32_t smallest = 0;
    if ((first & 0xE0) == 0xC0) {
        length = 2, code = first & 0x1F, smallest = 0x80;
    } else if ((first & 0xF0) == 0xE0) {
        length = 3, code = first & 0x0F, smallest = 0x800;
    } else if ((first & 0xF8) == 0xF0) {
        length = 4, code = first & 0x07, smallest = 0x10000;
    } else {
        return {};
    }
    for (std::size_t index = 1; index < length; ++index) {
        if (!isContinuation(text, index)) {
            return {};
        }
        code = code << 6 | (byteAt(text, index) & 0x3F);
    }
    if (code < smallest || code > 0x10FFFF) {
        return {};
    }
    return {code, length, true};
}

void appendCharacter(std::string& text, char32_t code) {
    const auto append = [&](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (code < 0x80) {
        append(code);
    } else if (code < 0x800) {
        append(0xC0 | code >> 6);
        append(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        append(0xE0 | code >> 12);
        append(0x80 | (code >> 6 & 0x3F));
        append(0x80 | (code & 0x3F));
    } else {
        append(0xF0 | code >> 18);
        append(0x80 | (code >> 12 & 0x3F));
        append(0x80 | (code >> 6 & 0x3F));
        append(0x80 | (code & 0x3F));
    }
}

/// The high surrogate whose three-byte form the text ends with, 0 when there is none.
char32_t trailingHighSurrogate(std::string_view text) {
    if (text.size() < 3 || byteAt(text, text.size() - 3) != 0xED) {
        return 0;
    }
    const Character last = firstCharacter(text.substr(text.size() - 3));
    return last.valid && last.length == 3 && isHighSurrogate(last.code) ? last.code : 0;
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
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        if (!character.valid || isHighSurrogate(character.code) || isLowSurrogate(character.code)) {
            return false;
        }
        text.remove_prefix(character.length);
    }
    return true;
}

void appendUtf16Unit(std::string& text, std::uint16_t unit) {
    if (isLowSurrogate(unit)) {
        if (const char32_t high = trailingHighSurrogate(text)) {
            text.resize(text.size() - 3);
            appendCharacter(text, 0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00U));
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

char32_t takeCharacter(std::string_view& text) {
    const Character character = firstCharacter(text);
    text.remove_prefix(character.length);
    return character.code;
}

std::size_t utf16Length(std::string_view text) {
    std::size_t length = 0;
    while (!text.empty()) {
        length += takeCharacter(text) > 0xFFFF ? 2 : 1;
    }
    return length;
}

std::string utf16FromUtf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(2 * text.size());
    const auto append = [&](char32_t unit) {
        bytes.push_back(static_cast<char>(unit >> 8));
        bytes.push_back(static_cast<char>(unit));
    };
    while (!text.empty()) {
        const char32_t code = takeCharacter(text);
        if (code > 0xFFFF) {
            append(0xD800 + ((code - 0x10000) >> 10));
            append(0xDC00 + ((code - 0x10000) & 0x3FF));
        } else {
            append(code);
        }
    }
    return bytes;
}

}  // namespace kpx
