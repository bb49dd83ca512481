#include "schedule/Reminder.h"

#include "region/DateUtilities.h"

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

/// A name that itself holds ": " is cut there; see behaviours.
std::string nameInLine(std::string_view line) {
    const auto pieces = split(line, ": ");
    return pieces.size() < 2 ? std::string() : std::string(pieces[1]);
}

}  // namespace

std::string reminderText(const RemindedPrescription& prescription, const LocalizedStrings& localized) {
    const auto glued = [&](const LocalizedStrings& localizedPiece) {
        return formatted("%@%@ %@\r %@%@ %@\r %@",
                         {localizedPiece("Prescription"), ":", prescription.drug, localizedPiece("for patient"), ":",
                          prescription.patient, localizedPiece("is due")});
    };
    const std::string text = localized.sentence("Prescription: %@\r for patient: %@\r is due",
                                                {prescription.drug, prescription.patient}, glued(localized));
    const std::string english = glued(LocalizedStrings());
    return prescriptionFromReminderText(text) == prescriptionFromReminderText(english) ? text : english;
}

std::optional<RemindedPrescription> prescriptionFromReminderText(std::string_view text) {
    const auto lines = split(text, "\r");
    if (lines.size() < 2) {
        return std::nullopt;
    }
    return RemindedPrescription{.patient = nameInLine(lines[1]), .drug = nameInLine(lines[0])};
}

Record reminderRow(std::string_view text, Date delivery) {
    const RemindedPrescription prescription =
        prescriptionFromReminderText(text).value_or(RemindedPrescription{.patient = {}, .drug = std::string(text)});
    return Record{{"patient", prescription.patient}, {"drug", prescription.drug}, {"when", delivery}};
}

Date reminderDeliveryDate(Date nextFillDate, const Environment& environment) {
    return dateAtTimeOfDay(nextFillDate, 8, 0, 0, environment);
}

ReminderCaption reminderCaption(bool row, std::optional<Date> nextFillDate, const Environment& environment,
                                const LocalizedStrings& localized) {
    if (!row) {
        return {localized.sentence("No prescription selected  Please try again", {},
                                   localized("No prescription selected") + "  " + localized("Please try again")),
                false};
    }
    if (!nextFillDate || *nextFillDate <= environment.now) {
        return {localized.sentence(
                    "Can't set reminder: prescription's 'Next Fill' date must be a future date  Please try again", {},
                    localized("Can't set reminder: prescription's 'Next Fill' date must be a future date") + "  " +
                        localized("Please try again")),
                false};
    }
    const std::string day = mediumStyleFromDate(*nextFillDate, environment);
    return {localized.sentence("Prescription selected for:  %@", {day},
                               localized("Prescription selected for:") + "  " + day),
            true};
}

}  // namespace kpx
