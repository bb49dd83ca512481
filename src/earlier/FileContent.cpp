#include "earlier/FileContent.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>

namespace kpx {
namespace {

using std::chrono::sys_days;
using std::chrono::sys_seconds;

constexpr std::string_view deletedEnd = "-deleted";
constexpr std::size_t stampLength = 16;  // 20240305T170000Z

/// The first and the last second that four digits of a year can name.
constexpr sys_seconds firstInstant = sys_days(std::chrono::year(0) / 1 / 1);
constexpr sys_seconds lastInstant = sys_days(std::chrono::year(10000) / 1 / 1) - std::chrono::seconds(1);

std::string stampOf(std::int64_t since) {
    const sys_seconds instant = std::clamp(sys_seconds(std::chrono::seconds(since)), firstInstant, lastInstant);
    const sys_days day = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(instant - day);
    char text[64];
    std::snprintf(text, sizeof text, "%04d%02u%02uT%02d%02d%02dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text;
}

/// Digits only; none when there is anything else.
std::optional<int> digits(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc{} && end == text.data() + text.size() && text.front() != '-';
    return whole ? std::optional(number) : std::nullopt;
}

std::optional<std::int64_t> instantOfStamp(std::string_view stamp) {
    if (stamp[8] != 'T' || stamp[15] != 'Z') {
        return std::nullopt;
    }
    const auto year = digits(stamp.substr(0, 4));
    const auto month = digits(stamp.substr(4, 2));
    const auto day = digits(stamp.substr(6, 2));
    const auto hour = digits(stamp.substr(9, 2));
    const auto minute = digits(stamp.substr(11, 2));
    const auto second = digits(stamp.substr(13, 2));
    if (!year || !month || !day || !hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date(std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    if (!date.ok()) {
        return std::nullopt;
    }
    const sys_seconds instant =
        sys_days(date) + std::chrono::hours(*hour) + std::chrono::minutes(*minute) + std::chrono::seconds(*second);
    return instant.time_since_epoch().count();
}

/// Beyond what any second sees; a number made up by somebody else shall leave room for the next.
constexpr int highestNumber = 1'000'000;

/// "", "-2", "-3" …; "-1" and "-02" are none of ours.
std::optional<int> numberOfEnd(std::string_view end) {
    if (end.empty()) {
        return 1;
    }
    const auto number = end.size() > 1 && end.front() == '-' && end[1] != '0' ? digits(end.substr(1)) : std::nullopt;
    return number && *number >= 2 && *number <= highestNumber ? number : std::nullopt;
}

}  // namespace

std::string nameOfKeptContent(const FileContent& content) {
    std::string name(householdFiles()[content.file].name);
    name += '.' + stampOf(content.since);
    if (content.number > 1) {
        name += '-' + std::to_string(content.number);
    }
    return content.wasDeletedFrom ? name + std::string(deletedEnd) : name;
}

std::optional<FileContent> keptContentOfName(std::string_view name) {
    FileContent content;
    const auto& files = householdFiles();
    const auto file = std::ranges::find_if(files, [&](const HouseholdFile& candidate) {
        return name.starts_with(candidate.name) && name.substr(candidate.name.size()).starts_with('.');
    });
    if (file == files.end() || name.size() < file->name.size() + 1 + stampLength) {
        return std::nullopt;
    }
    content.file = static_cast<std::size_t>(file - files.begin());
    name.remove_prefix(file->name.size() + 1);
    const auto since = instantOfStamp(name.substr(0, stampLength));
    name.remove_prefix(stampLength);
    content.wasDeletedFrom = name.ends_with(deletedEnd);
    if (content.wasDeletedFrom) {
        name.remove_suffix(deletedEnd.size());
    }
    const auto number = numberOfEnd(name);
    if (!since || !number) {
        return std::nullopt;
    }
    content.since = *since;
    content.number = *number;
    return content;
}

}  // namespace kpx
