#pragma once

#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <optional>
#include <string>
#include <string_view>

namespace kpx {

/// The prescription a reminder speaks of.
struct RemindedPrescription {
    std::string patient;
    std::string drug;
    bool operator==(const RemindedPrescription&) const = default;
};

/// The reminder's text, its only link back to the prescription. Its lines are separated by carriage
/// returns: "Prescription: Lisinopril\r for patient: Ann\r is due". In another language as well it is read back by
/// its form alone, so that any language finds it; a translation that would lead elsewhere leaves it in English.
std::string reminderText(const RemindedPrescription& prescription, const LocalizedStrings& localized);

/// Reads the text back: of the first and second line, what stands between the first ": " and the next.
/// None for a text of fewer than two lines; a line without ": " gives an empty name.
std::optional<RemindedPrescription> prescriptionFromReminderText(std::string_view text);

/// A row of the table of scheduled reminders: "patient" and "drug" as the text tells them, and "when". A text that
/// tells no prescription stands whole under "drug".
Record reminderRow(std::string_view text, Date delivery);

/// 08:00:00 on the next fill date's calendar day.
Date reminderDeliveryDate(Date nextFillDate, const Environment& environment);

/// The context menu over the row under the click.
struct ReminderCaption {
    std::string caption;
    bool canRemind = false;
};
/// `row` tells whether there is a row under the click, `nextFillDate` its date if it has one. A reminder
/// needs a date in the future.
ReminderCaption reminderCaption(bool row, std::optional<Date> nextFillDate, const Environment& environment,
                                const LocalizedStrings& localized);

}  // namespace kpx
