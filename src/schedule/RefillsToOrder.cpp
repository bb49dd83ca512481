#include "schedule/RefillsToOrder.h"

#include "core/Keys.h"
#include "region/DateUtilities.h"
#include "schedule/RefillSchedule.h"

#include <algorithm>

namespace kpx {

namespace {

constexpr std::size_t mostLines = 6;
constexpr int daysBetweenNamingsOfOverdue = 7;

struct Refill {
    std::string patient;
    std::string drug;
    Date nextFill;
    int daysAhead = 0;  ///< of the notification's day
    std::int64_t remaining = 0;
};

/// Whether the standing reminder of any of the days names a prescription whose next fill date lies so many days
/// after the last of them.
bool isNamed(int daysAhead, const StandingDays& days) {
    const auto isOneOfTheDays = [&](int ahead) { return ahead >= daysAhead && ahead <= daysAhead + days.missed; };
    // The latest of the days on which it counts as overdue.
    const int weeksOverdue = -daysAhead / daysBetweenNamingsOfOverdue;
    return isOneOfTheDays(days.lead) || isOneOfTheDays(0) ||
           (weeksOverdue > 0 && isOneOfTheDays(-weeksOverdue * daysBetweenNamingsOfOverdue));
}

/// What a reminder's text tells of the prescription: less than all of a name that holds ": ".
std::optional<RemindedPrescription> asTexts(const std::string& patient, const std::string& drug) {
    return prescriptionFromReminderText(reminderText({.patient = patient, .drug = drug}, {}));
}

/// A name in one line of plain text.
std::string inOneLine(std::string name) {
    std::ranges::replace_if(
        name, [](char character) { return character >= 0 && character < ' '; }, ' ');
    return name;
}

std::string lineOf(const Refill& refill, const Environment& environment, const LocalizedStrings& localized) {
    return formatted(
        localized(refill.remaining == 1 ? "%@ for %@: %@, %ld refill left" : "%@ for %@: %@, %ld refills left"),
        {inOneLine(refill.drug), inOneLine(refill.patient), monthAndDayFromDate(refill.nextFill, environment),
         std::to_string(refill.remaining)});
}

std::vector<Refill> refillsOfTheDays(Records history, const StandingDays& days,
                                     const std::vector<RemindedPrescription>& reminded,
                                     const Environment& environment) {
    const Date delivery = reminderDeliveryDate(days.day, environment);
    removeDictsWithEarlierDispenseDate(history, environment);
    const Records rows = copyMaintDueArrayForTVFromFilteredArray(history, environment);
    std::vector<Refill> refills;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const Record& row = rows[index];
        const auto nextFill = row.date("nextdate");
        const auto expiration = row.date("expiredateTabTwo");
        const std::int64_t remaining = history[index].integer(MHRefillsRemainKey);
        if (!nextFill || remaining <= 0 || (expiration && *expiration < delivery)) {
            continue;
        }
        Refill refill{row.text("patientTabTwo").value_or("").string(), row.text("drugTabTwo").value_or("").string(),
                      *nextFill, daysBetweenDate(delivery, *nextFill, environment), remaining};
        if (isNamed(refill.daysAhead, days) &&
            std::ranges::find(reminded, asTexts(refill.patient, refill.drug)) == reminded.end()) {
            refills.push_back(std::move(refill));
        }
    }
    std::ranges::stable_sort(refills, {}, &Refill::daysAhead);
    return refills;
}

}  // namespace

int standingChoiceOfLead(std::optional<int> lead) {
    const auto choice = std::ranges::find(standingChoices, lead, &StandingChoice::lead);
    return choice == standingChoices.end() ? 0 : static_cast<int>(choice - standingChoices.begin());
}

std::optional<RefillsToOrder> refillsToOrder(Records history, const StandingDays& days,
                                             const std::vector<RemindedPrescription>& reminded,
                                             const Environment& environment, const LocalizedStrings& localized) {
    const std::vector<Refill> refills = refillsOfTheDays(std::move(history), days, reminded, environment);
    if (refills.empty()) {
        return std::nullopt;
    }
    std::string text;
    for (std::size_t index = 0; index < std::min(refills.size(), mostLines); ++index) {
        text += (index == 0 ? "" : "\n") + lineOf(refills[index], environment, localized);
    }
    if (refills.size() > mostLines) {
        text += "\n" + formatted(localized("and %ld more"), {std::to_string(refills.size() - mostLines)});
    }
    return RefillsToOrder{localized("Refills to order"), text};
}

}  // namespace kpx
