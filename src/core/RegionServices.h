#pragma once

#include "core/Date.h"
#include "core/Environment.h"

#include <unicode/calendar.h>
#include <unicode/coll.h>
#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kpx {

// For this folder only: it brings the internationalisation library's types, which stay out of the
// headers others include.

/// The services made from a locale and a time zone, each made when first asked for and then kept:
/// making one takes far longer than using it. The calendars are scratch objects; every user sets all
/// the state it needs.
struct RegionServices {
    RegionServices(std::string_view localeNameOrPosixName, std::string_view timeZoneName);

    icu::Locale locale;
    std::string localeName;
    std::unique_ptr<icu::TimeZone> timeZone;

    /// The region's own calendar, set to the date.
    icu::Calendar& calendarAt(Date date);
    /// The Gregorian calendar in the region's time zone, set to the date.
    icu::Calendar& gregorianAt(Date date);
    /// The region's own calendar with every field cleared.
    icu::Calendar& clearedCalendar();

    std::string styled(Date date, icu::DateFormat::EStyle style);
    std::string formatted(Date date, std::string_view pattern);
    /// Full names as a formatter writes them within a date. Months from January, weekdays from Sunday.
    const std::vector<std::string>& monthNames();
    const std::vector<std::string>& weekdayNames();

    const icu::DecimalFormatSymbols& decimalSymbols();
    std::string decimalSymbol(icu::DecimalFormatSymbols::ENumberFormatSymbol symbol);
    /// The separator and the currency symbol that typed costs may hold.
    const std::string& groupingSeparator();
    const std::string& currencySymbol();
    /// Null when the pattern is none.
    const icu::DecimalFormat* decimalFormat(std::string_view pattern);

    /// Tertiary strength, digit runs by their value.
    const icu::Collator& standardCollator();
    /// Secondary strength: case makes no difference.
    const icu::Collator& caseInsensitiveCollator();

    /// Stored texts and their dates. A history of 100,000 records holds few distinct dates, and going
    /// through the calendar for each would cost more than reading the file.
    std::unordered_map<std::uint64_t, Date> datesOfStoredTexts;
    std::unordered_map<double, std::string> storedTextsOfDates;
    static constexpr std::size_t largestMemo = 20000;

private:
    std::unique_ptr<icu::Calendar> makeCalendar(const icu::Locale& calendarLocale) const;
    icu::SimpleDateFormat& patternFormatter(std::string_view pattern);
    std::vector<std::string> symbolNames(bool months);

    std::unique_ptr<icu::Calendar> m_calendar;
    std::unique_ptr<icu::Calendar> m_gregorian;
    std::map<int, std::unique_ptr<icu::DateFormat>> m_styleFormatters;
    std::map<std::string, std::unique_ptr<icu::SimpleDateFormat>, std::less<>> m_patternFormatters;
    std::optional<std::vector<std::string>> m_monthNames;
    std::optional<std::vector<std::string>> m_weekdayNames;
    std::unique_ptr<icu::DecimalFormatSymbols> m_decimalSymbols;
    std::optional<std::string> m_groupingSeparator;
    std::optional<std::string> m_currencySymbol;
    std::map<std::string, std::unique_ptr<icu::DecimalFormat>, std::less<>> m_decimalFormats;
    std::unique_ptr<icu::Collator> m_standardCollator;
    std::unique_ptr<icu::Collator> m_caseInsensitiveCollator;
};

/// Bytes that are no UTF-8 become U+FFFD.
icu::UnicodeString unicodeFromUtf8(std::string_view text);
std::string utf8FromUnicode(const icu::UnicodeString& text);

/// The library's milliseconds. An instant beyond 100,000 years from 1970, or none at all, as a damaged
/// file may hold, counts as the nearest it can compute with.
UDate millisecondsFromDate(Date date);
Date dateFromMilliseconds(UDate milliseconds);

/// Ends the program unless the library did what it was asked: it fails only without its own data or
/// without memory, and then no date or order the program makes could be trusted.
void requireSuccess(UErrorCode status, const char* what);

}  // namespace kpx
