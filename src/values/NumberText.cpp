#include "values/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace kpx {

namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// The text without the blanks it begins with: white space of ASCII and the no-break spaces that stand
/// between currency symbols and amounts.
std::string_view withoutLeadingBlanks(std::string_view text) {
    static constexpr std::array<std::string_view, 8> blanks = {" ", "\t", "\n", "\r", "\v", "\f", "\u00A0", "\u202F"};
    for (;;) {
        const auto* const blank =
            std::ranges::find_if(blanks, [&](std::string_view candidate) { return text.starts_with(candidate); });
        if (blank == blanks.end()) {
            return text;
        }
        text.remove_prefix(blank->size());
    }
}

bool takeSign(std::string_view& text) {
    if (text.empty() || (text.front() != '-' && text.front() != '+')) {
        return false;
    }
    const bool negative = text.front() == '-';
    text.remove_prefix(1);
    return negative;
}

/// Whether the number a text begins with, known to be out of a double's range, is too large rather than
/// too small: its first digit other than 0 decides, together with the exponent.
bool isTooLarge(std::string_view number) {
    std::int64_t integerDigits = 0;  // the decimal point's place, counted from the first digit that is not 0
    bool significant = false;
    bool fraction = false;
    std::size_t position = 0;
    for (; position < number.size() && (isDigit(number[position]) || (number[position] == '.' && !fraction));
         ++position) {
        const char character = number[position];
        if (character == '.') {
            fraction = true;
            continue;
        }
        significant = significant || character != '0';
        if (significant && !fraction) {
            ++integerDigits;
        } else if (!significant && fraction) {
            --integerDigits;
        }
    }
    if (position >= number.size() || (number[position] != 'e' && number[position] != 'E')) {
        return integerDigits > 0;
    }
    // Halved, so that the sum cannot overflow.
    return leadingInteger(number.substr(position + 1)) / 2 + integerDigits / 2 > 0;
}

}  // namespace

double leadingNumber(std::string_view text) {
    std::string_view rest = withoutLeadingBlanks(text);
    const bool negative = takeSign(rest);
    const bool begins = !rest.empty() && (isDigit(rest[0]) || (rest[0] == '.' && rest.size() > 1 && isDigit(rest[1])));
    if (!begins) {
        return 0;
    }
    double value = 0;
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value, std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) {
        value = isTooLarge(rest) ? HUGE_VAL : 0;
    }
    return negative ? -value : value;
}

std::int64_t leadingInteger(std::string_view text) {
    std::string_view rest = withoutLeadingBlanks(text);
    const bool negative = takeSign(rest);
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    const std::uint64_t limit = negative ? largest + 1 : largest;
    std::uint64_t magnitude = 0;
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), magnitude);
    magnitude = result.ec == std::errc::result_out_of_range ? limit : std::min(magnitude, limit);
    return static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
}

bool isItaNumber(std::string_view text) { return !text.empty() && std::ranges::all_of(text, isDigit); }

bool isWholeNumber(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return false;
        }
    }
    std::int64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

}  // namespace kpx
