#include "core/Unicode.h"

#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>
#include <cstdint>

namespace kpx {

std::u32string codePoints(std::string_view text) {
    std::u32string result;
    const auto length = static_cast<std::int64_t>(text.size());
    for (std::int64_t position = 0; position < length;) {
        UChar32 codePoint = 0;
        U8_NEXT_OR_FFFD(text.data(), position, length, codePoint);
        result.push_back(static_cast<char32_t>(codePoint));
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

std::string textFromMacOSRoman(std::string_view bytes) {
    const icu::UnicodeString text(bytes.data(), static_cast<std::int32_t>(bytes.size()), "macintosh");
    std::string result;
    return text.toUTF8String(result);
}

}  // namespace kpx
