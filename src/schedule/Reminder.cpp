#include "schedule/Reminder.h"

#include "core/DateUtilities.h"

#include <vector>

namespace kpx {

namespace {

std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
    std::vector<std::string_view> pieces;
    for (;;) {
        const std::size_t end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return pieces;
        }
        text.remove_prefix(end + separator.size());
    }
}

/// Deliberately simple: a name that itself holds ": " is cut there.
std::string nameInLine(std::string_view line) {
    const auto pieces = split(line, ": ");
    return pieces.size() < 2 ? std::string() : std::string(pieces[1]);
}

}  // namespace

std::string reminderText(const RemindedPrescription& prescription, const LocalizedStrings& localized) {
    return formatted("%@%@ %@\r %@%@ %@\r %@",
                     {localized("Prescription"), ":", prescription.drug, localized("for patient"), ":",
                      prescription.patient, localized("is due")});
}

std::optional<RemindedPrescription> prescriptionFromReminderText(std::string_view text) {
    const auto lines = split(text, "\r");
    if (lines.size() < 2) {
        return std::nullopt;
    }
    return RemindedPrescription{.patient = nameInLine(lines[1]), .drug = nameInLine(lines[0])};
}

Date reminderDeliveryDate(Date nextFillDate, const Environment& environment) {
    return dateAtTimeOfDay(nextFillDate, 8, 0, 0, environment);
}

ReminderCaption reminderCaption(bool row, std::optional<Date> nextFillDate, const Environment& environment,
                                const LocalizedStrings& localized) {
    const auto refusal = [&](std::string_view reason) {
        return ReminderCaption{formatted("%@  %@", {localized(reason), localized("Please try again")}), false};
    };
    if (!row) {
        return refusal("No prescription selected");
    }
    if (!nextFillDate || *nextFillDate <= environment.now) {
        return refusal("Can't set reminder: prescription's 'Next Fill' date must be a future date");
    }
    return {
        formatted("%@  %@", {localized("Prescription selected for:"), mediumStyleFromDate(*nextFillDate, environment)}),
        true};
}

}  // namespace kpx
