#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kpx {

// When reminders come. All reckoning is in the calendar days and the time of day of whatever time zone the
// user is in, so that after a journey 08:00 is the new zone's 08:00 of the same calendar day.

using LocalDay = std::chrono::local_days;

/// The time of day at which reminders come.
inline constexpr std::chrono::hours deliveryTime{8};

/// What a clock on the wall shows.
struct LocalTime {
    LocalDay day;
    std::chrono::seconds timeOfDay{0};
};

/// How far the latest delivery of a reminder has come.
enum class Phase {
    Waiting,    ///< nothing of it is on the screen: never posted, closed without a click, or not known any more
    Posting,    ///< just being handed to the notification server
    Shown,      ///< the server gave it a number and has not closed it
    Clicked,    ///< clicked; the application has not taken it back yet
    Withdrawn,  ///< gone, but for the notification that may still be on the screen
};

/// A reminder without its text. `deliveredDay` is the latest day for which it was posted.
struct Reminder {
    std::string identifier;
    LocalDay firstDay;
    std::optional<LocalDay> deliveredDay;
    Phase phase = Phase::Waiting;
    std::uint32_t notification = 0;  ///< the server's number; 0 unless Shown or Withdrawn
    bool operator==(const Reminder&) const = default;
};

/// The one standing reminder: it comes every day that has something to say, and its file says how many days ahead
/// it looks. Its `deliveredDay` is the latest day that needs no naming any more.
inline constexpr std::string_view standingIdentifier = "standing";
inline bool isStanding(const Reminder& reminder) { return reminder.identifier == standingIdentifier; }
/// One that begins with the next 08:00: what is due already has not been missed.
Reminder newStandingReminder(LocalTime now);

/// The latest day whose 08:00 is past.
LocalDay lastDueDay(LocalTime now);

/// The day that a delivery of now is recorded for. What was missed and comes before 08:00 is that calendar day's
/// showing, or it would be seen twice within it. The standing reminder never says the same again: early in the
/// morning it speaks for the days before only.
LocalDay dayDeliveredNow(const Reminder& reminder, LocalTime now);

/// Whether it is to be posted now. However many days the machine was off, what was missed comes once.
bool isDue(const Reminder& reminder, LocalTime now);

/// The day at whose 08:00 the agent has to wake next; none when nothing is scheduled. What is due already
/// and could not be posted needs no alarm of its own, so this is always later than now.
std::optional<LocalDay> nextDueDay(std::span<const Reminder> reminders, LocalTime now);

/// A delivery recorded for a day after tomorrow comes from a clock that was wrong and has been put right, for
/// no journey is that long. It would silence the reminder until that day, so it counts as the delivery
/// for the latest due day instead.
Reminder withSaneDeliveredDay(Reminder reminder, LocalTime now);

/// "2026-11-21", and back; years have four digits.
std::string textFromDay(LocalDay day);
std::optional<LocalDay> dayFromText(std::string_view text);

/// The reminder as the name of its file, from which it is read back; none for any other name. The changing
/// part stands in the name because a change of name is one indivisible step.
///
/// | name                             | reminder                                        |
/// |----------------------------------|-------------------------------------------------|
/// | `ab12.2026-11-21.never.waiting`  | never posted                                    |
/// | `ab12.2026-11-21.2026-11-22.17`  | posted for the 22nd, the server's number is 17  |
/// | `ab12.2026-11-21.never.withdrawn-17` | withdrawn; notification 17 is to be closed   |
std::string fileNameFromReminder(const Reminder& reminder);
std::optional<Reminder> reminderFromFileName(std::string_view name);

}  // namespace kpx
