#pragma once

#include "region/Environment.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

// Dates are converted and compared only through these helpers. All use the region's own calendar and
// time zone unless said otherwise. A date built from components denotes the start of its day: 00:00,
// the first of two where midnight comes twice, or the first existing moment where a clock change skips it.

/// A calendar day in the region's calendar.
struct CalendarDay {
    int year = 0;
    int month = 0;
    int day = 0;
    bool operator==(const CalendarDay&) const = default;
};

/// "20240305". Month and day have two digits, the year as many as it needs; the time of day is dropped.
std::string YYYYMMDDStrFromDate(Date date, const Environment& environment);

/// The inverse. Not validated: each part is read as its leading decimal digits (0 when there are none)
/// and out-of-range parts roll over.
///
/// | text       | date            |
/// |------------|-----------------|
/// | "20240305" | 5 March 2024    |
/// | "20241301" | 1 January 2025  |
/// | "2024"     | month 0, day 0: 30 November 2023 |
Date dateFromYYMMDDStr(std::string_view text, const Environment& environment);

int daysBetweenDate(Date from, Date to, const Environment& environment);
CalendarDay yearMonthDayFromDate(Date date, const Environment& environment);
Date janFirstThisYear(const Environment& environment);
Date dateFromYear(int year, int month, int day, const Environment& environment);
/// The same calendar day at its start.
Date cleanseDate(Date date, const Environment& environment);
/// Adds all three at once, from the original date: 29 February plus one year is 28 February.
Date dateByAddingDays(Date date, int days, int months, int years, const Environment& environment);

enum class CalendarUnit { Era, Year, Month, Week, Day, Hour, Minute, Second };
/// The difference in the given units, in the order of the units given; larger units are taken first.
std::vector<std::int64_t> diffDate(Date from, Date to, const std::vector<CalendarUnit>& units,
                                   const Environment& environment);

/// The date in a formatter's pattern, such as "yyyy/MM".
std::string componentOfDate(Date date, std::string_view format, const Environment& environment);
std::string mediumStyleFromDate(Date date, const Environment& environment);
std::string longStyleFromDate(Date date, const Environment& environment);
std::string shortStyleFromDate(Date date, const Environment& environment);
/// Without the year, as the region writes it: "Dec 20", "20. Dez.".
std::string monthAndDayFromDate(Date date, const Environment& environment);
/// Hours and minutes as the region writes them: "1:30 PM", "13:30".
std::string timeOfDayFromDate(Date date, const Environment& environment);
std::string yearFromDate(Date date, const Environment& environment);
std::string monthFromDate(Date date, const Environment& environment);
std::string dayFromDate(Date date, const Environment& environment);
std::string currentYear(const Environment& environment);
std::string currentMonth(const Environment& environment);
std::string currentDay(const Environment& environment);
std::string dayNameFromDate(Date date, const Environment& environment);
std::string shortDayNameFromDate(Date date, const Environment& environment);
std::string monthNameFromDate(Date date, const Environment& environment);
/// The month and its year in the region's short way: "Nov 2026", "2026年11月".
std::string monthAndYearFromDate(Date date, const Environment& environment);
/// 1 Sunday to 7 Saturday, in the Gregorian calendar whatever the region's.
int weekDayNumberFromDate(Date date, const Environment& environment);
/// 1 to 12, in the Gregorian calendar whatever the region's.
int monthNumberFromDate(Date date, const Environment& environment);

/// What the name look-ups find for a name that is none.
inline constexpr std::int64_t notFound = INT64_MAX;
/// January is 1. For a name that is no month, `notFound` plus one, wrapped; do not pass such names.
std::int64_t monthNumberFromName(std::string_view name, const Environment& environment);
/// None for any number outside 1 to 12.
std::optional<std::string> monthNameFromNumber(int number, const Environment& environment);
/// Sunday is 0, not 1 (see behaviours); `notFound` for a name that is no weekday.
std::int64_t dayNumberFromName(std::string_view name, const Environment& environment);
int daysInMonth(Date date, const Environment& environment);
/// That calendar day of the Gregorian calendar at the given time of day; where a clock change skips it, as
/// much later as the clock jumped.
Date dateAtTimeOfDay(Date day, int hour, int minute, int second, const Environment& environment);
/// That day of the Gregorian calendar at the time of day that `timeOfDay` has; where a change of the clocks skips it,
/// as much later as they jump.
Date dateOnDay(const CalendarDay& gregorianDay, Date timeOfDay, const Environment& environment);
/// The pattern in which a day is typed: the region's short style without names and marks, the year in full: "M/d/yyyy",
/// "dd.MM.yyyy"; "yyyy-MM-dd" where the style has no such form.
std::string typedDayPattern(const Environment& environment);
/// Whether both lie on one calendar day.
bool isThisDate(Date date, Date secondDate, const Environment& environment);

}  // namespace kpx
