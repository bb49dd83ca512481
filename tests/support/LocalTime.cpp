#include "tests/support/LocalTime.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace kpx::test {

namespace {

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

std::chrono::local_seconds LocalTime::localOf(Date date) const {
    // A file may hold any number as a date; the calendar ends before the year 32767.
    constexpr double furthest = 9.4e11;
    const double seconds = std::isnan(date.secondsSince1970()) ? 0 : std::floor(date.secondsSince1970());
    const auto instant = static_cast<std::int64_t>(std::clamp(seconds, -furthest, furthest));
    return std::chrono::local_seconds(std::chrono::seconds(instant + m_zone->offsetAt(instant)));
}

Date LocalTime::dateOf(std::chrono::local_seconds local) const {
    const TimeZone::Meaning meaning = m_zone->meaningOf(local.time_since_epoch().count());
    return Date::fromSecondsSince1970(static_cast<double>(meaning.change.value_or(meaning.instant)));
}

std::optional<Date> LocalTime::parse(std::string_view text) const {
    const bool hasTime = text.size() == 19 && text[10] == 'T' && text[13] == ':' && text[16] == ':';
    if ((text.size() != 10 && !hasTime) || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    struct Place {
        std::size_t position, length;
        int highest;
    };
    constexpr std::array<Place, 6> places{
        {{0, 4, 9999}, {5, 2, 12}, {8, 2, 31}, {11, 2, 23}, {14, 2, 59}, {17, 2, 59}}};
    std::array<int, 6> numbers{};
    for (std::size_t index = 0; index < (hasTime ? 6U : 3U); ++index) {
        const std::optional<int> number = digits(text, places[index].position, places[index].length);
        if (!number || *number > places[index].highest) {
            return std::nullopt;
        }
        numbers[index] = *number;
    }
    using namespace std::chrono;
    const year_month_day day{year(numbers[0]), month(static_cast<unsigned>(numbers[1])),
                             std::chrono::day(static_cast<unsigned>(numbers[2]))};
    if (numbers[0] < 1 || !day.ok()) {
        return std::nullopt;
    }
    const Date date = dateOf(local_days(day) + hours(numbers[3]) + minutes(numbers[4]) + seconds(numbers[5]));
    // A day that the clocks leave out as a whole is none.
    return floor<days>(localOf(date)) == local_days(day) ? std::optional(date) : std::nullopt;
}

std::string LocalTime::format(Date date) const {
    using namespace std::chrono;
    const local_seconds local = localOf(date);
    const auto midnight = floor<days>(local);
    const year_month_day day(midnight);
    const hh_mm_ss time(local - midnight);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text.data();
}

Date LocalTime::addingDays(Date date, int days) const { return dateOf(localOf(date) + std::chrono::days(days)); }

Date LocalTime::dayOfWithTimeOf(Date day, Date time) const {
    const std::string text = format(day).substr(0, 10) + format(time).substr(10);
    return parse(text).value_or(day);
}

}  // namespace kpx::test
