#include "region/RegionServices.h"

#include "region/LocaleName.h"

#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/gregocal.h>
#include <unicode/simpletz.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace kpx {

namespace {

/// Beyond this the caches start anew; only a caller that makes up patterns gets there.
constexpr std::size_t largestFormatterCache = 64;
constexpr double millisecondsPerSecond = 1000.0;

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

icu::Locale localeOrUS(const std::string& name) { return localeFromName(name).value_or(icu::Locale::getUS()); }

void setKeyword(icu::Locale& locale, const char* keyword, const char* value) {
    UErrorCode status = U_ZERO_ERROR;
    locale.setKeywordValue(keyword, value, status);
    requireSuccess(status, "locale");
}

/// A calendar of local time.
std::unique_ptr<icu::Calendar> makeCalendar(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(*icu::TimeZone::getGMT(), locale, status));
    requireSuccess(status, "calendar");
    return calendar;
}

/// The Gregorian calendar of today, also before its introduction: every day that can be typed is one, and a stored
/// day means the same to every program.
std::unique_ptr<icu::Calendar> makeGregorianCalendarOfAllTimes(const icu::Locale& locale) {
    constexpr UDate beforeAllDates = -7.0e15;
    UErrorCode status = U_ZERO_ERROR;
    auto calendar = std::make_unique<icu::GregorianCalendar>(*icu::TimeZone::getGMT(), locale, status);
    requireSuccess(status, "calendar");
    calendar->setGregorianChange(beforeAllDates, status);
    requireSuccess(status, "calendar");
    return calendar;
}

/// By how many milliseconds the zone's clocks are ahead at the date.
double offsetAt(Date date, const TimeZone& zone) {
    const double seconds = std::floor(millisecondsFromDate(date) / millisecondsPerSecond);
    return static_cast<double>(zone.offsetAt(static_cast<std::int64_t>(seconds))) * millisecondsPerSecond;
}

void setLocalTime(icu::Calendar& calendar, Date date, const TimeZone& zone) {
    UErrorCode status = U_ZERO_ERROR;
    calendar.setTime(millisecondsFromDate(date) + offsetAt(date, zone), status);
    requireSuccess(status, "calendar time");
}

std::string written(Date date, icu::DateFormat& formatter, const TimeZone& zone) {
    const auto offset = static_cast<std::int32_t>(offsetAt(date, zone));
    if (formatter.getTimeZone().getRawOffset() != offset) {
        formatter.setTimeZone(icu::SimpleTimeZone(offset, icu::UnicodeString()));
    }
    icu::UnicodeString text;
    return utf8FromUnicode(formatter.format(millisecondsFromDate(date), text));
}

icu::DecimalFormatSymbols symbolsOf(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    icu::DecimalFormatSymbols symbols(locale, status);
    requireSuccess(status, "number symbols");
    return symbols;
}

icu::DecimalFormatSymbols symbolsOfTheFiles(icu::Locale numbers, const icu::Locale& money) {
    using Symbols = icu::DecimalFormatSymbols;
    setKeyword(numbers, "numbers", "latn");
    Symbols symbols = symbolsOf(numbers);
    icu::UnicodeString grouping = symbols.getConstSymbol(Symbols::kGroupingSeparatorSymbol);
    const bool hasPoint = symbols.getConstSymbol(Symbols::kDecimalSeparatorSymbol) == u".";
    if (!hasPoint && (grouping == u"." || grouping == u",")) {
        grouping = u"\u202F";
    }
    symbols.setSymbol(Symbols::kGroupingSeparatorSymbol, grouping);
    symbols.setSymbol(Symbols::kMonetaryGroupingSeparatorSymbol, grouping);
    symbols.setSymbol(Symbols::kDecimalSeparatorSymbol, u".");
    symbols.setSymbol(Symbols::kMonetarySeparatorSymbol, u".");
    // The one that costs are read with: any other would turn a negative cost into nothing.
    symbols.setSymbol(Symbols::kMinusSignSymbol, u"-");
    symbols.setSymbol(Symbols::kCurrencySymbol, symbolsOf(money).getConstSymbol(Symbols::kCurrencySymbol));
    return symbols;
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

RegionServices::RegionServices(const RegionSettings& settings, Conventions whose)
    : m_conventions(whose),
      m_dates(localeOrUS(settings.dates)),
      m_numbers(localeOrUS(settings.numbers)),
      m_money(localeOrUS(settings.money)),
      m_order(localeOrUS(settings.order)),
      m_timeZone(timeZoneFromName(settings.timeZone, settings.zoneFolder)) {
    localeName = m_dates.getName();
    for (const std::string& name : settings.languages) {
        if (const auto language = localeFromName(name)) {
            languageCodes.emplace_back(language->getLanguage());
        }
    }
    if (languageCodes.empty()) {
        languageCodes.emplace_back("en");
    }
    if (whose == Conventions::OfTheFiles) {
        setKeyword(m_dates, "calendar", "gregorian");
        setKeyword(m_dates, "numbers", "latn");
    }
}

std::unique_ptr<icu::Calendar> RegionServices::makeOwnCalendar() const {
    return m_conventions == Conventions::OwnOfTheRegion ? makeCalendar(m_dates)
                                                        : makeGregorianCalendarOfAllTimes(m_dates);
}

icu::Calendar& RegionServices::clearedCalendar() {
    if (!m_calendar) {
        m_calendar = makeOwnCalendar();
    }
    m_calendar->clear();
    return *m_calendar;
}

icu::Calendar& RegionServices::calendarAt(Date date) {
    icu::Calendar& calendar = clearedCalendar();
    setLocalTime(calendar, date, *m_timeZone);
    return calendar;
}

icu::Calendar& RegionServices::gregorianAt(Date date) {
    if (!m_gregorian) {
        m_gregorian = m_conventions == Conventions::OwnOfTheRegion
                          ? makeCalendar(icu::Locale("en_US@calendar=gregorian"))
                          : makeGregorianCalendarOfAllTimes(m_dates);
    }
    setLocalTime(*m_gregorian, date, *m_timeZone);
    return *m_gregorian;
}

Date RegionServices::dateOf(const icu::Calendar& calendar, LeftOut leftOut) const {
    UErrorCode status = U_ZERO_ERROR;
    const UDate local = calendar.getTime(status);
    requireSuccess(status, "calendar time");
    const auto seconds = static_cast<std::int64_t>(std::floor(local / millisecondsPerSecond));
    const TimeZone::Meaning meaning = m_timeZone->meaningOf(seconds);
    if (meaning.change && leftOut == LeftOut::CountsAsChange) {
        return dateFromMilliseconds(static_cast<double>(*meaning.change) * millisecondsPerSecond);
    }
    return dateFromMilliseconds(local + static_cast<double>(meaning.instant - seconds) * millisecondsPerSecond);
}

std::unique_ptr<icu::SimpleDateFormat> RegionServices::makePatternFormatter(const icu::UnicodeString& pattern) const {
    UErrorCode status = U_ZERO_ERROR;
    auto formatter = std::make_unique<icu::SimpleDateFormat>(pattern, m_dates, status);
    requireSuccess(status, "date formatter");
    formatter->adoptCalendar(makeOwnCalendar().release());
    return formatter;
}

icu::DateFormat& RegionServices::styleFormatter(icu::DateFormat::EStyle style) {
    std::unique_ptr<icu::DateFormat>& formatter = m_styleFormatters[style];
    if (!formatter) {
        formatter.reset(icu::DateFormat::createDateInstance(style, m_dates));
        requireSuccess(formatter ? U_ZERO_ERROR : U_MISSING_RESOURCE_ERROR, "date style");
        const auto* simple = dynamic_cast<icu::SimpleDateFormat*>(formatter.get());
        if (simple && m_conventions == Conventions::OfTheFiles) {
            // From its pattern alone: a style may also ask for months in Roman numbers.
            icu::UnicodeString pattern;
            formatter = makePatternFormatter(simple->toPattern(pattern));
        }
        formatter->adoptCalendar(makeOwnCalendar().release());
    }
    return *formatter;
}

std::string RegionServices::shortDatePattern() {
    icu::UnicodeString pattern;
    if (const auto* formatter = dynamic_cast<icu::SimpleDateFormat*>(&styleFormatter(icu::DateFormat::kShort))) {
        formatter->toPattern(pattern);
    }
    return utf8FromUnicode(pattern);
}

std::string RegionServices::styled(Date date, icu::DateFormat::EStyle style) {
    return written(date, styleFormatter(style), *m_timeZone);
}

icu::SimpleDateFormat& RegionServices::patternFormatter(std::string_view pattern) {
    const auto known = m_patternFormatters.find(pattern);
    if (known != m_patternFormatters.end()) {
        return *known->second;
    }
    makeRoom(m_patternFormatters);
    auto formatter = makePatternFormatter(unicodeFromUtf8(pattern));
    return *m_patternFormatters.emplace(pattern, std::move(formatter)).first->second;
}

std::string RegionServices::formatted(Date date, std::string_view pattern) {
    return written(date, patternFormatter(pattern), *m_timeZone);
}

const std::string& RegionServices::patternOfSkeleton(std::string_view skeleton) {
    const auto known = m_patternsOfSkeletons.find(skeleton);
    if (known != m_patternsOfSkeletons.end()) {
        return known->second;
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(m_dates, status));
    requireSuccess(status, "date patterns");
    const icu::UnicodeString pattern = generator->getBestPattern(unicodeFromUtf8(skeleton), status);
    requireSuccess(status, "date pattern");
    return m_patternsOfSkeletons.emplace(skeleton, utf8FromUnicode(pattern)).first->second;
}

std::string RegionServices::formattedBySkeleton(Date date, std::string_view skeleton) {
    return formatted(date, patternOfSkeleton(skeleton));
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
        m_decimalSymbols = std::make_unique<icu::DecimalFormatSymbols>(m_conventions == Conventions::OwnOfTheRegion
                                                                           ? symbolsOf(m_numbers)
                                                                           : symbolsOfTheFiles(m_numbers, m_money));
    }
    return *m_decimalSymbols;
}

bool RegionServices::hasDecimalComma() {
    return m_hasDecimalComma
               ? *m_hasDecimalComma
               : m_hasDecimalComma.emplace(
                     symbolsOf(m_numbers).getConstSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol) == u",");
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
        m_standardCollator = makeCollator(m_order, icu::Collator::TERTIARY, UCOL_ON);
    }
    return *m_standardCollator;
}

const icu::Collator& RegionServices::caseInsensitiveCollator() {
    if (!m_caseInsensitiveCollator) {
        m_caseInsensitiveCollator = makeCollator(m_order, icu::Collator::SECONDARY, UCOL_OFF);
    }
    return *m_caseInsensitiveCollator;
}

}  // namespace kpx
