#include "region/DateUtilities.h"

#include "region/DayPattern.h"
#include "region/RegionServices.h"
#include "values/NumberText.h"
#include "values/Unicode.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace kpx {

namespace {

// Components beyond these are read as these: far outside any history, and inside what a calendar can
// count without overflow.
constexpr int largestYear = 100000;
constexpr int largestMonth = 1000000;
constexpr int largestDay = 100000000;

int clamped(std::int64_t value, int largest) {
    return static_cast<int>(std::clamp<std::int64_t>(value, -largest, largest));
}

int field(const icu::Calendar& calendar, UCalendarDateFields which) {
    UErrorCode status = U_ZERO_ERROR;
    const int value = calendar.get(which, status);
    requireSuccess(status, "calendar field");
    return value;
}

void setTimeOfDay(icu::Calendar& calendar, int hour, int minute, int second, int millisecond) {
    calendar.set(UCAL_HOUR_OF_DAY, hour);
    calendar.set(UCAL_MINUTE, minute);
    calendar.set(UCAL_SECOND, second);
    calendar.set(UCAL_MILLISECOND, millisecond);
}

void add(icu::Calendar& calendar, UCalendarDateFields which, int amount) {
    UErrorCode status = U_ZERO_ERROR;
    calendar.add(which, amount, status);
    requireSuccess(status, "calendar sum");
}

/// The number of the date's calendar day, counted across months and years.
int dayNumber(Date date, const Environment& environment) {
    return field(environment.region.services().calendarAt(date), UCAL_JULIAN_DAY);
}

/// How many bytes the first `count` characters of the text take, or all of them when there are fewer.
std::size_t lengthOfCharacters(std::string_view text, int count) {
    std::size_t length = 0;
    for (; count > 0 && length < text.size(); --count) {
        length += firstCharacter(text.substr(length)).length;
    }
    return length;
}

Date dateFromComponents(std::int64_t year, std::int64_t month, std::int64_t day, RegionServices& services) {
    icu::Calendar& calendar = services.clearedCalendar();
    calendar.set(UCAL_YEAR, clamped(year, largestYear));
    calendar.set(UCAL_MONTH, clamped(month, largestMonth) - 1);
    calendar.set(UCAL_DATE, clamped(day, largestDay));
    return services.dateOf(calendar);
}

/// Digits only: a part that begins with a sign or a blank counts as 0.
std::int64_t leadingDigits(std::string_view text) {
    const bool begins = !text.empty() && text.front() >= '0' && text.front() <= '9';
    return begins ? leadingInteger(text) : 0;
}

Date parsedStoredDate(std::string_view text, RegionServices& services) {
    const std::size_t yearEnd = lengthOfCharacters(text, 4);
    const std::size_t monthEnd = yearEnd + lengthOfCharacters(text.substr(yearEnd), 2);
    return dateFromComponents(leadingDigits(text.substr(0, yearEnd)),
                              leadingDigits(text.substr(yearEnd, monthEnd - yearEnd)),
                              leadingDigits(text.substr(monthEnd)), services);
}

std::string twoDigits(int number) { return (number > 9 ? "" : "0") + std::to_string(number); }

struct UnitOfCalendar {
    CalendarUnit unit;
    UCalendarDateFields field;
    double seconds;  ///< where the unit is a fixed time, else 0
};

/// From the largest to the smallest.
constexpr std::array<UnitOfCalendar, 8> unitsBySize = {{
    {CalendarUnit::Era, UCAL_ERA, 0},
    {CalendarUnit::Year, UCAL_YEAR, 0},
    {CalendarUnit::Month, UCAL_MONTH, 0},
    {CalendarUnit::Week, UCAL_WEEK_OF_YEAR, 0},
    {CalendarUnit::Day, UCAL_DATE, 0},
    {CalendarUnit::Hour, UCAL_HOUR_OF_DAY, 3600},
    {CalendarUnit::Minute, UCAL_MINUTE, 60},
    {CalendarUnit::Second, UCAL_SECOND, 1},
}};

/// The whole units of the calendar from its time to the target's; it moves on by them.
std::int64_t takeDifference(icu::Calendar& calendar, const icu::Calendar& target, const UnitOfCalendar& unit) {
    UErrorCode status = U_ZERO_ERROR;
    // Eras have no common length to be taken off: the years that follow count across them.
    const std::int64_t difference = unit.unit == CalendarUnit::Era
                                        ? target.get(UCAL_ERA, status) - calendar.get(UCAL_ERA, status)
                                        : calendar.fieldDifference(target.getTime(status), unit.field, status);
    requireSuccess(status, "calendar difference");
    return difference;
}

std::int64_t positionOfName(std::string_view name, const std::vector<std::string>& names) {
    const auto found = std::ranges::find(names, name);
    return found == names.end() ? notFound : found - names.begin();
}

}  // namespace

std::string YYYYMMDDStrFromDate(Date date, const Environment& environment) {
    auto& memo = environment.region.services().storedTextsOfDates;
    const auto known = memo.find(date.secondsSinceReference);
    if (known != memo.end()) {
        return known->second;
    }
    const CalendarDay day = yearMonthDayFromDate(date, environment);
    std::string text = std::to_string(day.year) + twoDigits(day.month) + twoDigits(day.day);
    if (memo.size() >= RegionServices::largestMemo) {
        memo.clear();
    }
    memo.emplace(date.secondsSinceReference, text);
    return text;
}

Date dateFromYYMMDDStr(std::string_view text, const Environment& environment) {
    RegionServices& services = environment.region.services();
    std::uint64_t packed = 0;
    if (text.size() != sizeof packed) {
        return parsedStoredDate(text, services);
    }
    std::memcpy(&packed, text.data(), sizeof packed);
    auto& memo = services.datesOfStoredTexts;
    const auto known = memo.find(packed);
    if (known != memo.end()) {
        return known->second;
    }
    if (memo.size() >= RegionServices::largestMemo) {
        memo.clear();
    }
    return memo.emplace(packed, parsedStoredDate(text, services)).first->second;
}

int daysBetweenDate(Date from, Date to, const Environment& environment) {
    return dayNumber(to, environment) - dayNumber(from, environment);
}

CalendarDay yearMonthDayFromDate(Date date, const Environment& environment) {
    const icu::Calendar& calendar = environment.region.services().calendarAt(date);
    return {field(calendar, UCAL_YEAR), field(calendar, UCAL_MONTH) + 1, field(calendar, UCAL_DATE)};
}

Date janFirstThisYear(const Environment& environment) {
    return dateFromYear(yearMonthDayFromDate(environment.now, environment).year, 1, 1, environment);
}

Date dateFromYear(int year, int month, int day, const Environment& environment) {
    return dateFromComponents(year, month, day, environment.region.services());
}

Date cleanseDate(Date date, const Environment& environment) {
    RegionServices& services = environment.region.services();
    icu::Calendar& calendar = services.calendarAt(date);
    setTimeOfDay(calendar, 0, 0, 0, 0);
    return services.dateOf(calendar);
}

Date dateByAddingDays(Date date, int days, int months, int years, const Environment& environment) {
    if (days == 0 && months == 0 && years == 0) {
        return date;
    }
    RegionServices& services = environment.region.services();
    icu::Calendar& calendar = services.calendarAt(date);
    const int dayOfMonth = field(calendar, UCAL_DATE);
    // From the first of the month years and months lead to an existing day: the day of the month is then cut
    // once, for both.
    calendar.set(UCAL_DATE, 1);
    add(calendar, UCAL_YEAR, clamped(years, largestYear));
    add(calendar, UCAL_MONTH, clamped(months, largestMonth));
    UErrorCode status = U_ZERO_ERROR;
    calendar.set(UCAL_DATE, std::min(dayOfMonth, calendar.getActualMaximum(UCAL_DATE, status)));
    requireSuccess(status, "month's length");
    add(calendar, UCAL_DATE, clamped(days, largestDay));
    return services.dateOf(calendar, RegionServices::LeftOut::MovesOn);
}

std::vector<std::int64_t> diffDate(Date from, Date to, const std::vector<CalendarUnit>& units,
                                   const Environment& environment) {
    RegionServices& services = environment.region.services();
    const std::unique_ptr<icu::Calendar> target(services.calendarAt(to).clone());
    const std::unique_ptr<icu::Calendar> calendar(services.calendarAt(from).clone());
    std::vector<std::int64_t> differences(units.size(), 0);
    // Where the units of a fixed time, which no change of the clocks touches, begin to count.
    Date start = dateFromMilliseconds(millisecondsFromDate(from));
    const Date end = dateFromMilliseconds(millisecondsFromDate(to));
    for (const UnitOfCalendar& unit : unitsBySize) {
        if (std::ranges::find(units, unit.unit) == units.end()) {
            continue;
        }
        std::int64_t difference = 0;
        if (unit.seconds > 0) {
            const double whole = std::trunc(end.secondsSince(start) / unit.seconds);
            difference = static_cast<std::int64_t>(whole);
            start = start.addingSeconds(whole * unit.seconds);
        } else {
            difference = takeDifference(*calendar, *target, unit);
            if (difference != 0) {
                start = services.dateOf(*calendar, RegionServices::LeftOut::MovesOn);
            }
        }
        for (std::size_t index = 0; index < units.size(); ++index) {
            if (units[index] == unit.unit) {
                differences[index] = difference;
            }
        }
    }
    return differences;
}

std::string componentOfDate(Date date, std::string_view format, const Environment& environment) {
    return environment.region.services().formatted(date, format);
}

std::string mediumStyleFromDate(Date date, const Environment& environment) {
    return environment.region.services().styled(date, icu::DateFormat::kMedium);
}

std::string longStyleFromDate(Date date, const Environment& environment) {
    return environment.region.services().styled(date, icu::DateFormat::kLong);
}

std::string shortStyleFromDate(Date date, const Environment& environment) {
    return environment.region.services().styled(date, icu::DateFormat::kShort);
}

std::string monthAndDayFromDate(Date date, const Environment& environment) {
    return environment.region.services().formattedBySkeleton(date, "MMMd");
}

std::string timeOfDayFromDate(Date date, const Environment& environment) {
    return environment.region.services().formattedBySkeleton(date, "jmm");
}

std::string yearFromDate(Date date, const Environment& environment) {
    return componentOfDate(date, "yyyy", environment);
}

std::string monthFromDate(Date date, const Environment& environment) {
    return componentOfDate(date, "MM", environment);
}

std::string dayFromDate(Date date, const Environment& environment) { return componentOfDate(date, "d", environment); }

std::string currentYear(const Environment& environment) { return yearFromDate(environment.now, environment); }

std::string currentMonth(const Environment& environment) { return monthFromDate(environment.now, environment); }

std::string currentDay(const Environment& environment) { return dayFromDate(environment.now, environment); }

std::string dayNameFromDate(Date date, const Environment& environment) {
    return componentOfDate(date, "EEEE", environment);
}

std::string shortDayNameFromDate(Date date, const Environment& environment) {
    return componentOfDate(date, "EEE", environment);
}

std::string monthNameFromDate(Date date, const Environment& environment) {
    return componentOfDate(date, "MMMM", environment);
}

std::string monthAndYearFromDate(Date date, const Environment& environment) {
    return environment.region.services().formattedBySkeleton(date, "yMMM");
}

int weekDayNumberFromDate(Date date, const Environment& environment) {
    return field(environment.region.services().gregorianAt(date), UCAL_DAY_OF_WEEK);
}

int monthNumberFromDate(Date date, const Environment& environment) {
    return field(environment.region.services().gregorianAt(date), UCAL_MONTH) + 1;
}

std::int64_t monthNumberFromName(std::string_view name, const Environment& environment) {
    const std::int64_t position = positionOfName(name, environment.region.services().monthNames());
    return position == notFound ? std::numeric_limits<std::int64_t>::min() : position + 1;
}

std::optional<std::string> monthNameFromNumber(int number, const Environment& environment) {
    const std::vector<std::string>& names = environment.region.services().monthNames();
    if (number < 1 || number > 12 || static_cast<std::size_t>(number) > names.size()) {
        return std::nullopt;
    }
    return names[static_cast<std::size_t>(number) - 1];
}

std::int64_t dayNumberFromName(std::string_view name, const Environment& environment) {
    return positionOfName(name, environment.region.services().weekdayNames());
}

int daysInMonth(Date date, const Environment& environment) {
    const icu::Calendar& calendar = environment.region.services().calendarAt(date);
    UErrorCode status = U_ZERO_ERROR;
    const int days = calendar.getActualMaximum(UCAL_DATE, status);
    requireSuccess(status, "month's length");
    return days;
}

Date dateAtTimeOfDay(Date day, int hour, int minute, int second, const Environment& environment) {
    RegionServices& services = environment.region.services();
    icu::Calendar& calendar = services.gregorianAt(day);
    setTimeOfDay(calendar, hour, minute, second, 0);
    return services.dateOf(calendar, RegionServices::LeftOut::MovesOn);
}

Date dateOnDay(const CalendarDay& gregorianDay, Date timeOfDay, const Environment& environment) {
    RegionServices& services = environment.region.services();
    icu::Calendar& calendar = services.gregorianAt(timeOfDay);
    calendar.set(UCAL_EXTENDED_YEAR, gregorianDay.year);
    calendar.set(UCAL_MONTH, gregorianDay.month - 1);
    calendar.set(UCAL_DATE, gregorianDay.day);
    return services.dateOf(calendar, RegionServices::LeftOut::MovesOn);
}

std::string typedDayPattern(const Environment& environment) {
    return typedDayPattern(environment.region.services().shortDatePattern());
}

bool isThisDate(Date date, Date secondDate, const Environment& environment) {
    return dayNumber(date, environment) == dayNumber(secondDate, environment);
}

}  // namespace kpx
