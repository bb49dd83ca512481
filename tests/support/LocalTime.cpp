#include "tests/support/LocalTime.h"

#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace kpx::test {

namespace {

UDate millisecondsOf(Date date) { return std::floor(date.secondsSince1970()) * 1000.0; }

/// The decimal number that stands in exactly those places.
std::optional<int> digits(std::string_view text, std::size_t position, std::size_t length) {
    int number = 0;
    for (std::size_t index = position; index < position + length; ++index) {
        if (text[index] < '0' || text[index] > '9') {
            return std::nullopt;
        }
        number = number * 10 + (text[index] - '0');
    }
    return number;
}

}  // namespace

struct LocalTime::Calendar {
    explicit Calendar(const std::string& timeZone)
        : calendar(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(timeZone)), icu::Locale::getRoot(),
                   status) {
        if (U_FAILURE(status)) {
            std::fputs("no calendar data\n", stderr);
            std::abort();
        }
        if (timeZone.empty() || calendar.getTimeZone() == icu::TimeZone::getUnknown()) {
            calendar.setTimeZone(*icu::TimeZone::getGMT());
        }
        calendar.setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
        calendar.setSkippedWallTimeOption(UCAL_WALLTIME_NEXT_VALID);
    }

    int field(UCalendarDateFields which) { return calendar.get(which, status); }
    Date date() { return Date::fromSecondsSince1970(calendar.getTime(status) / 1000.0); }

    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar;
};

LocalTime::LocalTime(const std::string& timeZone) : m_calendar(std::make_unique<Calendar>(timeZone)) {}
LocalTime::~LocalTime() = default;

std::optional<Date> LocalTime::parse(std::string_view text) const {
    const bool hasTime = text.size() == 19 && text[10] == 'T' && text[13] == ':' && text[16] == ':';
    if ((text.size() != 10 && !hasTime) || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    struct Place {
        UCalendarDateFields field;
        std::size_t position, length;
        int highest;
    };
    constexpr std::array<Place, 6> places{{{UCAL_YEAR, 0, 4, 9999},
                                           {UCAL_MONTH, 5, 2, 12},
                                           {UCAL_DATE, 8, 2, 31},
                                           {UCAL_HOUR_OF_DAY, 11, 2, 23},
                                           {UCAL_MINUTE, 14, 2, 59},
                                           {UCAL_SECOND, 17, 2, 59}}};
    icu::GregorianCalendar& calendar = m_calendar->calendar;
    calendar.clear();
    int day = 0;
    for (std::size_t index = 0; index < (hasTime ? 6U : 3U); ++index) {
        const Place& place = places[index];
        const std::optional<int> number = digits(text, place.position, place.length);
        if (!number || *number > place.highest || (index < 3 && *number < 1)) {
            return std::nullopt;
        }
        calendar.set(place.field, place.field == UCAL_MONTH ? *number - 1 : *number);
        if (place.field == UCAL_DATE) {
            day = *number;
        }
    }
    const Date date = m_calendar->date();
    return m_calendar->field(UCAL_DATE) == day ? std::optional(date) : std::nullopt;
}

std::string LocalTime::format(Date date) const {
    Calendar& calendar = *m_calendar;
    calendar.calendar.setTime(millisecondsOf(date), calendar.status);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", calendar.field(UCAL_EXTENDED_YEAR),
                  calendar.field(UCAL_MONTH) + 1, calendar.field(UCAL_DATE), calendar.field(UCAL_HOUR_OF_DAY),
                  calendar.field(UCAL_MINUTE), calendar.field(UCAL_SECOND));
    return text.data();
}

Date LocalTime::addingDays(Date date, int days) const {
    m_calendar->calendar.setTime(millisecondsOf(date), m_calendar->status);
    m_calendar->calendar.add(UCAL_DATE, days, m_calendar->status);
    return m_calendar->date();
}

Date LocalTime::dayOfWithTimeOf(Date day, Date time) const {
    const std::string text = format(day).substr(0, 10) + format(time).substr(10);
    return parse(text).value_or(day);
}

}  // namespace kpx::test
