#include "plist/OldStylePropertyListText.h"

#include "plist/PropertyListUnicode.h"

#include <array>
#include <cstdint>

namespace kpx {
namespace {

/// The upper half of the NeXTSTEP encoding; its last two codes are not assigned.
constexpr std::array<std::uint16_t, 128> nextStepUpperHalf = {
    0x00A0, 0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C7, 0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC,
    0x00CD, 0x00CE, 0x00CF, 0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D9, 0x00DA, 0x00DB,
    0x00DC, 0x00DD, 0x00DE, 0x00B5, 0x00D7, 0x00F7, 0x00A9, 0x00A1, 0x00A2, 0x00A3, 0x2044, 0x00A5, 0x0192,
    0x00A7, 0x00A4, 0x2019, 0x201C, 0x00AB, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x00AE, 0x2013, 0x2020, 0x2021,
    0x00B7, 0x00A6, 0x00B6, 0x2022, 0x201A, 0x201E, 0x201D, 0x00BB, 0x2026, 0x2030, 0x00AC, 0x00BF, 0x00B9,
    0x02CB, 0x00B4, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x00A8, 0x00B2, 0x02DA, 0x00B8, 0x00B3, 0x02DD,
    0x02DB, 0x02C7, 0x2014, 0x00B1, 0x00BC, 0x00BD, 0x00BE, 0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5,
    0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00C6, 0x00ED, 0x00AA, 0x00EE, 0x00EF, 0x00F0, 0x00F1,
    0x0141, 0x00D8, 0x0152, 0x00BA, 0x00F2, 0x00F3, 0x00F4, 0x00F5, 0x00F6, 0x00E6, 0x00F9, 0x00FA, 0x00FB,
    0x0131, 0x00FC, 0x00FD, 0x0142, 0x00F8, 0x0153, 0x00DF, 0x00FE, 0x00FF, 0xFFFD, 0xFFFD,
};

/// Up to `count` digits of the base, taken off the text. Null when it begins with none.
std::optional<unsigned> takeDigits(std::string_view& text, std::size_t count, unsigned base) {
    constexpr std::string_view digits = "0123456789abcdef";
    unsigned number = 0;
    std::size_t taken = 0;
    for (; taken < count && taken < text.size(); ++taken) {
        const char character = text[taken];
        const std::size_t digit =
            digits.find(character >= 'A' && character <= 'F' ? static_cast<char>(character - 'A' + 'a') : character);
        if (digit >= base) {
            break;
        }
        number = number * base + static_cast<unsigned>(digit);
    }
    text.remove_prefix(taken);
    return taken > 0 ? std::optional(number) : std::nullopt;
}

/// Appends what follows a backslash, taking it off the rest.
bool appendEscape(std::string& text, std::string_view& rest) {
    if (rest.empty()) {
        return false;
    }
    if (rest.front() >= '0' && rest.front() <= '7') {
        const unsigned code = *takeDigits(rest, 3, 8);
        if (code > 0xFF) {
            return false;
        }
        appendUtf16Unit(text, code < 0x80 ? static_cast<std::uint16_t>(code) : nextStepUpperHalf[code - 0x80]);
        return true;
    }
    const char escape = rest.front();
    rest.remove_prefix(1);
    if (escape == 'U') {
        const std::optional<unsigned> unit = takeDigits(rest, 4, 16);
        appendUtf16Unit(text, static_cast<std::uint16_t>(unit.value_or(0)));
        return unit.has_value();
    }
    constexpr std::string_view names = "abfnrtv";
    constexpr std::string_view characters = "\a\b\f\n\r\t\v";
    const std::size_t name = names.find(escape);
    text.push_back(name == std::string_view::npos ? escape : characters[name]);
    return true;
}

}  // namespace

std::optional<std::string> unescapedOldStyleText(std::string_view quoted) {
    std::string text;
    text.reserve(quoted.size());
    while (!quoted.empty()) {
        const std::size_t plain = std::min(quoted.find('\\'), quoted.size());
        text += quoted.substr(0, plain);
        quoted.remove_prefix(plain);
        if (quoted.empty()) {
            break;
        }
        quoted.remove_prefix(1);
        if (!appendEscape(text, quoted)) {
            return std::nullopt;
        }
    }
    return text;
}

}  // namespace kpx
