#pragma once

#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "schedule/Reminder.h"
#include "values/Record.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

// The standing reminder: one notification a day for all prescriptions that reach their day, without anybody
// having set it.

/// What the user can choose, in the menu's order.
struct StandingChoice {
    std::string_view title;
    /// How many days before its next fill date a prescription is named; none for the reminder that is off.
    std::optional<int> lead;
};
inline constexpr std::array<StandingChoice, 4> standingChoices{{{localizable("Off"), std::nullopt},
                                                                {localizable("On the Day"), 0},
                                                                {localizable("3 Days Before"), 3},
                                                                {localizable("A Week Before"), 7}}};

/// The menu's position of that lead; a lead that the menu does not have counts as off.
int standingChoiceOfLead(std::optional<int> lead);

/// What one standing reminder is to speak of.
struct StandingDays {
    /// Any instant of the calendar day.
    Date day;
    /// How many days before it had no standing reminder: what they would have named is named now.
    int missed = 0;
    int lead = 0;
};

struct RefillsToOrder {
    std::string title;
    /// One line each, separated by line feeds.
    std::string text;
    bool operator==(const RefillsToOrder&) const = default;
};

/// The notification for these days, none when nothing reaches its day.
///
/// Of every patient and drug the latest fill counts. It is named when it is not expired at 08:00 of the day, has
/// refills remaining, has no reminder of its own that comes on the day, and its next fill date, on the day that the
/// schedule shows, is
///
/// | days ahead                | it is            |
/// |---------------------------|------------------|
/// | the lead                  | to be ordered    |
/// | 0                         | due              |
/// | −7, −14, −21 …            | overdue          |
///
/// The soonest comes first; after six lines a last one says how many more there are. `reminded` are the
/// prescriptions with a reminder of their own on that day, as their texts tell them.
std::optional<RefillsToOrder> refillsToOrder(Records history, const StandingDays& days,
                                             const std::vector<RemindedPrescription>& reminded,
                                             const Environment& environment, const LocalizedStrings& localized);

}  // namespace kpx
