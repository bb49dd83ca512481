#include "values/Unicode.h"

#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace kpx {

Character firstCharacter(std::string_view text) {
    const auto longest = static_cast<std::int32_t>(std::min<std::size_t>(text.size(), U8_MAX_LENGTH));
    std::int32_t length = 0;
    UChar32 code = 0;
    U8_NEXT(text.data(), length, longest, code);
    const bool isSurrogate =
        code < 0 && longest >= 3 && text.front() == '\xED' && U8_IS_TRAIL(text[1]) && U8_IS_TRAIL(text[2]);
    if (isSurrogate) {
        length = 0;
        U8_NEXT_UNSAFE(text.data(), length, code);
    }
    return code < 0 ? Character() : Character{static_cast<char32_t>(code), static_cast<std::size_t>(length), true};
}

std::u32string codePoints(std::string_view text) {
    std::u32string result;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        result.push_back(character.code);
        text.remove_prefix(character.length);
    }
    return result;
}

std::size_t characterCount(std::string_view text) { return codePoints(text).size(); }

std::string withoutLastCharacter(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    auto position = static_cast<std::int64_t>(text.size());
    U8_BACK_1(reinterpret_cast<const std::uint8_t*>(text.data()), 0, position);
    return std::string(text.substr(0, static_cast<std::size_t>(position)));
}

std::string withLatinDigits(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        const std::int32_t digit = u_charDigitValue(static_cast<UChar32>(character.code));
        if (digit >= 0) {
            result += static_cast<char>('0' + digit);
        } else {
            result += text.substr(0, character.length);
        }
        text.remove_prefix(character.length);
    }
    return result;
}

std::string beginningInOneLine(std::string_view text, std::size_t characters) {
    const auto shown = [](char32_t code) {
        const int8_t kind = u_charType(static_cast<UChar32>(code));
        const bool isControl = kind == U_CONTROL_CHAR || kind == U_FORMAT_CHAR || kind == U_LINE_SEPARATOR ||
                               kind == U_PARAGRAPH_SEPARATOR || kind == U_SURROGATE;
        return isControl ? U' ' : code;
    };
    std::u32string line = codePoints(text);
    std::ranges::transform(line, line.begin(), shown);
    line.erase(line.find_last_not_of(U' ') + 1);
    if (line.size() > characters && characters > 0) {
        line.resize(characters);
        line.back() = U'…';
    }
    std::string result;
    return icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(line.data()),
                                         static_cast<std::int32_t>(line.size()))
        .toUTF8String(result);
}

std::string textFromMacOSRoman(std::string_view bytes) {
    const icu::UnicodeString text(bytes.data(), static_cast<std::int32_t>(bytes.size()), "macintosh");
    std::string result;
    return text.toUTF8String(result);
}

}  // namespace kpx
