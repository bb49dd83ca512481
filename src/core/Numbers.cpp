#include "core/Numbers.h"

#include "core/RegionServices.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace kpx {

namespace {

constexpr int costFractionDigits = 2;

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

std::string withoutOccurrences(std::string text, std::string_view unwanted) {
    if (unwanted.empty()) {
        return text;
    }
    for (std::size_t position = text.find(unwanted); position != std::string::npos;
         position = text.find(unwanted, position)) {
        text.erase(position, unwanted.size());
    }
    return text;
}

/// Decimal digits, the first one not 0, with the place of the decimal point among them: 12.5 is "125"
/// and 2, 0.05 is "5" and -1.
struct Decimal {
    std::string digits;
    int point = 0;
};

/// The shortest decimal that reads back as the same number. REQUIRES: finite, not negative.
Decimal shortestDecimal(double value) {
    std::array<char, 32> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific).ptr;
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const std::size_t exponentMark = text.find('e');
    Decimal decimal;
    for (const char character : text.substr(0, exponentMark)) {
        if (character != '.') {
            decimal.digits += character;
        }
    }
    decimal.point = static_cast<int>(leadingInteger(text.substr(exponentMark + 1))) + 1;
    return decimal;
}

void roundHalfEven(Decimal& decimal, int fractionDigits) {
    const int kept = decimal.point + fractionDigits;
    const int available = static_cast<int>(decimal.digits.size());
    if (kept >= available) {
        return;
    }
    if (kept < 0) {
        decimal.digits.clear();
        return;
    }
    const std::string dropped = decimal.digits.substr(static_cast<std::size_t>(kept));
    decimal.digits.resize(static_cast<std::size_t>(kept));
    const bool half = dropped.front() == '5' && dropped.find_first_not_of('0', 1) == std::string::npos;
    const bool lastIsOdd = kept > 0 && (decimal.digits.back() - '0') % 2 == 1;
    if (half ? !lastIsOdd : dropped.front() < '5') {
        return;
    }
    while (!decimal.digits.empty() && decimal.digits.back() == '9') {
        decimal.digits.pop_back();
    }
    if (decimal.digits.empty()) {
        decimal.digits.assign(1, '1');
        ++decimal.point;
    } else {
        ++decimal.digits.back();
    }
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
    if (result.ec == std::errc::result_out_of_range || magnitude > limit) {
        magnitude = limit;
    }
    return static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
}

bool isItaNumber(std::string_view text) { return !text.empty() && std::ranges::all_of(text, isDigit); }

std::string removingGroupingAndCurrency(std::string_view text, const Environment& environment) {
    RegionServices& services = environment.region.services();
    return withoutOccurrences(withoutOccurrences(std::string(text), services.groupingSeparator()),
                              services.currencySymbol());
}

std::string formatCostStrings(double value) {
    if (std::isnan(value)) {
        return "NaN";
    }
    std::string text = std::signbit(value) ? "-" : "";
    if (std::isinf(value)) {
        return text + "\u221E";
    }
    Decimal decimal;
    if (value != 0) {
        decimal = shortestDecimal(std::abs(value));
        roundHalfEven(decimal, costFractionDigits);
    }
    const auto digitAt = [&](int index) {
        const bool stands = index >= 0 && index < static_cast<int>(decimal.digits.size());
        return stands ? decimal.digits[static_cast<std::size_t>(index)] : '0';
    };
    for (int index = 0; index < decimal.point; ++index) {
        text += digitAt(index);
    }
    text += '.';
    for (int index = 0; index < costFractionDigits; ++index) {
        text += digitAt(decimal.point + index);
    }
    return text;
}

std::string cleanFormatCostStr(std::optional<std::string_view> text, const Environment& environment) {
    return formatCostStrings(text ? leadingNumber(removingGroupingAndCurrency(*text, environment)) : 0.0);
}

std::string copyFormatStringForTextField(double number, std::string_view pattern, const Environment& environment) {
    const icu::DecimalFormat* format = environment.region.services().decimalFormat(pattern);
    icu::UnicodeString text;
    return format ? utf8FromUnicode(format->format(number, text)) : std::string();
}

std::string formatCurrency(double value, const Environment& environment) {
    return copyFormatStringForTextField(value, "\u00A4###,###,##0.00", environment);
}

std::optional<double> rowCostFromStoredText(std::string_view text) {
    const std::string_view unsignedText = text.starts_with('-') ? text.substr(1) : text;
    const bool plain = std::ranges::all_of(unsignedText, [](char c) { return isDigit(c) || c == '.'; }) &&
                       std::ranges::count(unsignedText, '.') <= 1 && std::ranges::any_of(unsignedText, isDigit);
    if (plain) {
        return leadingNumber(text);
    }
    static const std::unique_ptr<icu::NumberFormat> format = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::NumberFormat> made(icu::NumberFormat::createInstance(icu::Locale::getUS(), status));
        requireSuccess(status, "decimal parser");
        return made;
    }();
    const icu::UnicodeString wide = unicodeFromUtf8(text);
    icu::Formattable number;
    icu::ParsePosition position(0);
    format->parse(wide, number, position);
    if (position.getIndex() == 0 || position.getIndex() != wide.length()) {
        return std::nullopt;
    }
    UErrorCode status = U_ZERO_ERROR;
    const double value = number.getDouble(status);
    return U_FAILURE(status) || std::isnan(value) ? std::nullopt : std::optional(value);
}

std::string decimalSeparator(const Environment& environment) {
    return environment.region.services().decimalSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
}

}  // namespace kpx
