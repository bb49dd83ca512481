#include "reminders/Schedule.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

namespace kpx {

namespace {

using std::chrono::days;

constexpr std::string_view never = "never";
constexpr std::string_view withdrawn = "withdrawn-";
constexpr std::array<std::pair<Phase, std::string_view>, 3> phaseNames{
    {{Phase::Waiting, "waiting"}, {Phase::Posting, "posting"}, {Phase::Clicked, "clicked"}}};

template <typename Number>
std::optional<Number> wholeNumber(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || text.front() == '-' || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

/// Cuts off what stands before the next dot, and the dot.
std::string_view nextPart(std::string_view& rest) {
    const std::size_t dot = rest.find('.');
    const std::string_view part = rest.substr(0, dot);
    rest.remove_prefix(dot == std::string_view::npos ? rest.size() : dot + 1);
    return part;
}

std::string phaseText(const Reminder& reminder) {
    if (reminder.phase == Phase::Withdrawn) {
        return std::string(withdrawn) + std::to_string(reminder.notification);
    }
    const auto found = std::ranges::find(phaseNames, reminder.phase, &std::pair<Phase, std::string_view>::first);
    return found == phaseNames.end() ? std::to_string(reminder.notification) : std::string(found->second);
}

}  // namespace

Reminder newStandingReminder(LocalTime now) {
    return {.identifier = std::string(standingIdentifier),
            .firstDay = lastDueDay(now) + days(1),
            .deliveredDay = std::nullopt};
}

LocalDay dayDeliveredNow(const Reminder& reminder, LocalTime now) {
    return isStanding(reminder) ? lastDueDay(now) : now.day;
}

LocalDay lastDueDay(LocalTime now) { return now.timeOfDay >= deliveryTime ? now.day : now.day - days(1); }

bool isDue(const Reminder& reminder, LocalTime now) {
    const LocalDay due = lastDueDay(now);
    return reminder.firstDay <= due && (!reminder.deliveredDay || *reminder.deliveredDay < due);
}

std::optional<LocalDay> nextDueDay(std::span<const Reminder> reminders, LocalTime now) {
    std::optional<LocalDay> next;
    const LocalDay earliest = lastDueDay(now) + days(1);
    for (const Reminder& reminder : reminders) {
        const LocalDay notYetDelivered = reminder.deliveredDay ? *reminder.deliveredDay + days(1) : earliest;
        const LocalDay day = std::max({earliest, reminder.firstDay, notYetDelivered});
        next = std::min(next.value_or(day), day);
    }
    return next;
}

Reminder withSaneDeliveredDay(Reminder reminder, LocalTime now) {
    if (reminder.deliveredDay && *reminder.deliveredDay > now.day + days(1)) {
        reminder.deliveredDay = lastDueDay(now);
    }
    return reminder;
}

std::string textFromDay(LocalDay day) {
    const std::chrono::year_month_day date(day);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text;
}

std::optional<LocalDay> dayFromText(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    const auto year = wholeNumber<int>(text.substr(0, 4));
    const auto month = wholeNumber<unsigned>(text.substr(5, 2));
    const auto day = wholeNumber<unsigned>(text.substr(8, 2));
    if (!year || !month || !day) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year(*year), std::chrono::month(*month),
                                           std::chrono::day(*day)};
    return date.ok() ? std::optional(LocalDay(date)) : std::nullopt;
}

std::string fileNameFromReminder(const Reminder& reminder) {
    return reminder.identifier + "." + textFromDay(reminder.firstDay) + "." +
           (reminder.deliveredDay ? textFromDay(*reminder.deliveredDay) : std::string(never)) + "." +
           phaseText(reminder);
}

std::optional<Reminder> reminderFromFileName(std::string_view name) {
    Reminder reminder;
    reminder.identifier = nextPart(name);
    const auto firstDay = dayFromText(nextPart(name));
    const std::string_view delivered = nextPart(name);
    if (reminder.identifier.empty() || !firstDay) {
        return std::nullopt;
    }
    reminder.firstDay = *firstDay;
    if (delivered != never) {
        reminder.deliveredDay = dayFromText(delivered);
        if (!reminder.deliveredDay) {
            return std::nullopt;
        }
    }
    const auto phase = std::ranges::find(phaseNames, name, &std::pair<Phase, std::string_view>::second);
    if (phase != phaseNames.end()) {
        reminder.phase = phase->first;
        return reminder;
    }
    reminder.phase = Phase::Shown;
    if (name.starts_with(withdrawn)) {
        reminder.phase = Phase::Withdrawn;
        name.remove_prefix(withdrawn.size());
    }
    const auto notification = wholeNumber<std::uint32_t>(name);
    if (!notification || *notification == 0) {
        return std::nullopt;
    }
    reminder.notification = *notification;
    return reminder;
}

}  // namespace kpx
