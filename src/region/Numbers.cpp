#include "region/Numbers.h"

#include "region/RegionServices.h"
#include "values/NumberText.h"

#include <algorithm>
#include <cmath>

namespace kpx {

namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

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

/// What ICU makes without the region's own symbols, for files.
icu::DecimalFormat storedCostFormat() {
    UErrorCode status = U_ZERO_ERROR;
    icu::DecimalFormat format("######.00", icu::DecimalFormatSymbols(icu::Locale::getUS(), status), status);
    requireSuccess(status, "stored costs' format");
    format.setRoundingMode(icu::DecimalFormat::kRoundHalfEven);
    return format;
}

}  // namespace

std::string removingGroupingAndCurrency(std::string_view text, const Environment& environment) {
    RegionServices& services = environment.region.services();
    return withoutOccurrences(withoutOccurrences(std::string(text), services.groupingSeparator()),
                              services.currencySymbol());
}

std::string formatCostStrings(double value) {
    if (std::isnan(value)) {
        return "NaN";  // whatever its sign bit
    }
    static const icu::DecimalFormat format = storedCostFormat();
    icu::UnicodeString text;
    return utf8FromUnicode(format.format(value, text));
}

std::string cleanFormatCostStr(std::optional<std::string_view> text, const Environment& environment) {
    return formatCostStrings(text ? leadingNumber(removingGroupingAndCurrency(*text, environment)) : 0.0);
}

std::string copyFormatStringForTextField(double number, std::string_view pattern, const Environment& environment) {
    const icu::DecimalFormat* format = environment.region.services().decimalFormat(pattern);
    icu::UnicodeString text;
    return format ? utf8FromUnicode(format->format(number, text)) : std::string();
}

std::string formatShownCost(double value, const Environment& environment) {
    return copyFormatStringForTextField(value, "###,###,###.00", environment);
}

std::string formatShownCost(const Value& cost, const Environment& environment) {
    if (const auto* amount = cost.as<double>()) {
        return formatShownCost(*amount, environment);
    }
    if (const auto* whole = cost.as<std::int64_t>()) {
        return formatShownCost(static_cast<double>(*whole), environment);
    }
    return textOfValue(&cost).value_or("").string();
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
