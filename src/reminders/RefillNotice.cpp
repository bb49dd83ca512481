#include "reminders/RefillNotice.h"

#include "core/DataFiles.h"
#include "region/DateUtilities.h"
#include "region/LocalizedStrings.h"

#include <system_error>

namespace kpx {

namespace {

/// The prescriptions with a reminder of their own that comes on the day.
std::vector<RemindedPrescription> remindedOn(LocalDay day, const ReminderFolder& reminders) {
    std::vector<RemindedPrescription> reminded;
    for (const Reminder& reminder : reminders.load().value_or(std::vector<Reminder>())) {
        if (reminder.phase == Phase::Withdrawn || isStanding(reminder) || reminder.firstDay > day) {
            continue;
        }
        const FoundContent found = reminders.read(reminder);
        const auto prescription = prescriptionFromReminderText(found.content.text);
        if (found.state == FoundContent::State::Whole && prescription) {
            reminded.push_back(*prescription);
        }
    }
    return reminded;
}

}  // namespace

RefillNotice refillNotice(const Reminder& standing, int lead, const ReminderFolder& reminders, LocalTime now,
                          const RefillSources& sources, const Region& region) {
    const LocalDay day = lastDueDay(now);
    const LocalDay before = standing.deliveredDay.value_or(standing.firstDay - std::chrono::days(1));
    const int missed = static_cast<int>((day - before).count()) - 1;
    std::error_code error;
    if (!std::filesystem::is_directory(sources.dataFolder, error)) {
        return {};  // reading would make it, and nothing is written there from here
    }
    const DataFile history = readDataFile(sources.dataFolder, prescriptionHistoryFile);
    if (history.state == DataFile::State::Unreadable) {
        return {.isKnown = false};
    }
    if (history.state == DataFile::State::Damaged || missed < 0) {
        return {};
    }
    const Date date = dateOfDay(day, region);
    return {.refills = refillsToOrder(history.records, {.day = date, .missed = missed, .lead = lead},
                                      remindedOn(day, reminders), {date, region},
                                      textsFor(sources.resources, region.languageCodes()))};
}

LocalDay dayOfDate(Date date, const Region& region) {
    const CalendarDay day = yearMonthDayFromDate(date, {date, region});
    return LocalDay(std::chrono::year(day.year) / day.month / day.day);
}

Date dateOfDay(LocalDay day, const Region& region) {
    const std::chrono::year_month_day date(day);
    return dateFromYear(static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
                        static_cast<int>(static_cast<unsigned>(date.day())), {{}, region});
}

}  // namespace kpx
