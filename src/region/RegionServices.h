#pragma once

#include "region/Environment.h"
#include "region/TimeZone.h"
#include "values/Date.h"

#include <unicode/calendar.h>
#include <unicode/coll.h>
#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>

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

/// The services made from the region's settings, each made when first asked for and then kept: making one takes
/// far longer than using it. The calendars are scratch objects; every user sets all the state it needs.
///
/// The library's own table of time zones is never asked: it is as old as the library, and would differ from what
/// the desktop shows. Calendars count local time, as universal time to the library; formatters get the offset of
/// the instant they are to write.
struct RegionServices {
    enum class Conventions { OwnOfTheRegion, OfTheFiles };
    RegionServices(const RegionSettings& settings, Conventions whose);

    std::string localeName;
    std::vector<std::string> languageCodes;

    /// The region's own calendar, set to the date's local time.
    icu::Calendar& calendarAt(Date date);
    /// The Gregorian calendar, set to the date's local time.
    icu::Calendar& gregorianAt(Date date);
    /// The region's own calendar with every field cleared.
    icu::Calendar& clearedCalendar();

    /// A local time that a change of the clocks leaves out.
    enum class LeftOut {
        CountsAsChange,  ///< the next moment there is
        MovesOn          ///< as much later as the clocks jump: 02:30 is 03:30
    };
    /// When the calendar's local time is; the first of two instants where it comes twice.
    Date dateOf(const icu::Calendar& calendar, LeftOut leftOut = LeftOut::CountsAsChange) const;

    std::string styled(Date date, icu::DateFormat::EStyle style);
    std::string formatted(Date date, std::string_view pattern);
    /// By the pattern that the region has for these fields, in its own order.
    std::string formattedBySkeleton(Date date, std::string_view skeleton);
    /// The pattern of the short style, as "M/d/yy".
    std::string shortDatePattern();
    /// Full names as a formatter writes them within a date. Months from January, weekdays from Sunday.
    const std::vector<std::string>& monthNames();
    const std::vector<std::string>& weekdayNames();

    bool hasDecimalComma();
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

    /// Stored texts and their dates. A history holds few distinct dates: showing a filtered one of 10,000 fills takes
    /// 8.2 ms with these, 15.2 ms without, an Add 19 and 25 ms (bench/history).
    std::unordered_map<std::uint64_t, Date> datesOfStoredTexts;
    std::unordered_map<double, std::string> storedTextsOfDates;
    static constexpr std::size_t largestMemo = 20000;

private:
    std::unique_ptr<icu::Calendar> makeOwnCalendar() const;
    std::unique_ptr<icu::SimpleDateFormat> makePatternFormatter(const icu::UnicodeString& pattern) const;
    icu::DateFormat& styleFormatter(icu::DateFormat::EStyle style);
    icu::SimpleDateFormat& patternFormatter(std::string_view pattern);
    const std::string& patternOfSkeleton(std::string_view skeleton);
    std::vector<std::string> symbolNames(bool months);
    const icu::DecimalFormatSymbols& decimalSymbols();

    Conventions m_conventions;
    icu::Locale m_dates;
    icu::Locale m_numbers;
    icu::Locale m_money;
    icu::Locale m_order;
    std::shared_ptr<const TimeZone> m_timeZone;
    std::unique_ptr<icu::Calendar> m_calendar;
    std::unique_ptr<icu::Calendar> m_gregorian;
    std::map<int, std::unique_ptr<icu::DateFormat>> m_styleFormatters;
    std::map<std::string, std::unique_ptr<icu::SimpleDateFormat>, std::less<>> m_patternFormatters;
    std::optional<std::vector<std::string>> m_monthNames;
    std::optional<std::vector<std::string>> m_weekdayNames;
    std::map<std::string, std::string, std::less<>> m_patternsOfSkeletons;
    std::unique_ptr<icu::DecimalFormatSymbols> m_decimalSymbols;
    std::optional<bool> m_hasDecimalComma;
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
