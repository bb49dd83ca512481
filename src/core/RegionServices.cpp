#include "core/RegionServices.h"

#include <unicode/dtfmtsym.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace kpx {

namespace {

/// Beyond this the caches start anew; only a caller that makes up patterns gets there.
constexpr std::size_t largestFormatterCache = 64;

template <typename Map>
void makeRoom(Map& map) {
    if (map.size() >= largestFormatterCache) {
        map.clear();
    }
}

std::unique_ptr<icu::Collator> makeCollator(const icu::Locale& locale, icu::Collator::ECollationStrength strength,
                                            UColAttributeValue numeric) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
    requireSuccess(status, "collator");
    collator->setStrength(strength);
    collator->setAttribute(UCOL_NUMERIC_COLLATION, numeric, status);
    requireSuccess(status, "collator");
    return collator;
}

}  // namespace

void requireSuccess(UErrorCode status, const char* what) {
    if (U_FAILURE(status)) {
        std::fprintf(stderr, "no %s: %s\n", what, u_errorName(status));
        std::abort();
    }
}

icu::UnicodeString unicodeFromUtf8(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

std::string utf8FromUnicode(const icu::UnicodeString& text) {
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

UDate millisecondsFromDate(Date date) {
    constexpr double furthest = 100000.0 * 365.2425 * 86400.0 * 1000.0;
    const double milliseconds = date.secondsSince1970() * 1000.0;
    return std::isnan(milliseconds) ? 0 : std::clamp(milliseconds, -furthest, furthest);
}

Date dateFromMilliseconds(UDate milliseconds) { return Date::fromSecondsSince1970(milliseconds / 1000.0); }

std::unique_ptr<icu::Calendar> RegionServices::makeCalendar(const icu::Locale& calendarLocale) const {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(*timeZone, calendarLocale, status));
    requireSuccess(status, "calendar");
    // A day begins at the first moment it has.
    calendar->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    calendar->setSkippedWallTimeOption(UCAL_WALLTIME_NEXT_VALID);
    return calendar;
}

icu::Calendar& RegionServices::clearedCalendar() {
    if (!m_calendar) {
        m_calendar = makeCalendar(locale);
    }
    m_calendar->clear();
    return *m_calendar;
}

icu::Calendar& RegionServices::calendarAt(Date date) {
    icu::Calendar& calendar = clearedCalendar();
    UErrorCode status = U_ZERO_ERROR;
    calendar.setTime(millisecondsFromDate(date), status);
    requireSuccess(status, "calendar time");
    return calendar;
}

icu::Calendar& RegionServices::gregorianAt(Date date) {
    if (!m_gregorian) {
        m_gregorian = makeCalendar(icu::Locale("en_US@calendar=gregorian"));
    }
    UErrorCode status = U_ZERO_ERROR;
    m_gregorian->setTime(millisecondsFromDate(date), status);
    requireSuccess(status, "calendar time");
    return *m_gregorian;
}

std::string RegionServices::styled(Date date, icu::DateFormat::EStyle style) {
    std::unique_ptr<icu::DateFormat>& formatter = m_styleFormatters[style];
    if (!formatter) {
        formatter.reset(icu::DateFormat::createDateInstance(style, locale));
        requireSuccess(formatter ? U_ZERO_ERROR : U_MISSING_RESOURCE_ERROR, "date style");
        formatter->setTimeZone(*timeZone);
    }
    icu::UnicodeString text;
    return utf8FromUnicode(formatter->format(millisecondsFromDate(date), text));
}

icu::SimpleDateFormat& RegionServices::patternFormatter(std::string_view pattern) {
    const auto known = m_patternFormatters.find(pattern);
    if (known != m_patternFormatters.end()) {
        return *known->second;
    }
    makeRoom(m_patternFormatters);
    UErrorCode status = U_ZERO_ERROR;
    auto formatter = std::make_unique<icu::SimpleDateFormat>(unicodeFromUtf8(pattern), locale, status);
    requireSuccess(status, "date formatter");
    formatter->setTimeZone(*timeZone);
    return *m_patternFormatters.emplace(pattern, std::move(formatter)).first->second;
}

std::string RegionServices::formatted(Date date, std::string_view pattern) {
    icu::UnicodeString text;
    return utf8FromUnicode(patternFormatter(pattern).format(millisecondsFromDate(date), text));
}

std::vector<std::string> RegionServices::symbolNames(bool months) {
    using Symbols = icu::DateFormatSymbols;
    const Symbols& symbols = *patternFormatter("MMMM").getDateFormatSymbols();
    std::int32_t count = 0;
    const icu::UnicodeString* names = months ? symbols.getMonths(count, Symbols::FORMAT, Symbols::WIDE)
                                             : symbols.getWeekdays(count, Symbols::FORMAT, Symbols::WIDE);
    const std::int32_t first = months ? 0 : 1;  // the weekdays' table has an empty entry at 0
    std::vector<std::string> result;
    for (std::int32_t index = first; index < count; ++index) {
        result.push_back(utf8FromUnicode(names[index]));
    }
    return result;
}

const std::vector<std::string>& RegionServices::monthNames() {
    return m_monthNames ? *m_monthNames : m_monthNames.emplace(symbolNames(true));
}

const std::vector<std::string>& RegionServices::weekdayNames() {
    return m_weekdayNames ? *m_weekdayNames : m_weekdayNames.emplace(symbolNames(false));
}

const icu::DecimalFormatSymbols& RegionServices::decimalSymbols() {
    if (!m_decimalSymbols) {
        UErrorCode status = U_ZERO_ERROR;
        m_decimalSymbols = std::make_unique<icu::DecimalFormatSymbols>(locale, status);
        requireSuccess(status, "number symbols");
    }
    return *m_decimalSymbols;
}

std::string RegionServices::decimalSymbol(icu::DecimalFormatSymbols::ENumberFormatSymbol symbol) {
    return utf8FromUnicode(decimalSymbols().getSymbol(symbol));
}

const std::string& RegionServices::groupingSeparator() {
    return m_groupingSeparator
               ? *m_groupingSeparator
               : m_groupingSeparator.emplace(decimalSymbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol));
}

const std::string& RegionServices::currencySymbol() {
    return m_currencySymbol ? *m_currencySymbol
                            : m_currencySymbol.emplace(decimalSymbol(icu::DecimalFormatSymbols::kCurrencySymbol));
}

const icu::DecimalFormat* RegionServices::decimalFormat(std::string_view pattern) {
    const auto known = m_decimalFormats.find(pattern);
    if (known != m_decimalFormats.end()) {
        return known->second.get();
    }
    makeRoom(m_decimalFormats);
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::DecimalFormat> format(new icu::DecimalFormat("#", decimalSymbols(), status));
    requireSuccess(status, "decimal format");
    // Applied afterwards: the constructor would give the currency's own number of decimals precedence
    // over the pattern's.
    format->applyPattern(unicodeFromUtf8(pattern), status);
    format->setRoundingMode(icu::DecimalFormat::kRoundHalfEven);
    return m_decimalFormats.emplace(pattern, U_FAILURE(status) ? nullptr : std::move(format)).first->second.get();
}

const icu::Collator& RegionServices::standardCollator() {
    if (!m_standardCollator) {
        m_standardCollator = makeCollator(locale, icu::Collator::TERTIARY, UCOL_ON);
    }
    return *m_standardCollator;
}

const icu::Collator& RegionServices::caseInsensitiveCollator() {
    if (!m_caseInsensitiveCollator) {
        m_caseInsensitiveCollator = makeCollator(locale, icu::Collator::SECONDARY, UCOL_OFF);
    }
    return *m_caseInsensitiveCollator;
}

}  // namespace kpx
