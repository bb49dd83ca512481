#include "schedule/DueText.h"

#include "region/DateUtilities.h"
#include "schedule/RefillSchedule.h"

#include <algorithm>

namespace kpx {

std::string dueText(const Records& history, const Environment& environment, const LocalizedStrings& localized) {
    Records due = history;
    applyScheduleMode(due, ScheduleMode::Overdue, environment);
    if (due.empty()) {
        return localized("Nothing is due.");
    }
    const Date today = dateAtTimeOfDay(environment.now, 0, 0, 0, environment);
    const Records rows = copyMaintDueArrayForTVFromFilteredArray(due, environment);
    const auto overdue = std::ranges::count_if(rows, [&](const Record& row) {
        const auto nextFill = row.date("nextdate");
        return nextFill && *nextFill < today;
    });
    const std::string dueCount = std::to_string(due.size());
    const std::string overdueCount = std::to_string(overdue);
    const bool oneDue = due.size() == 1;
    if (overdue == 0) {
        return formatted(localized(oneDue ? "1 refill is due" : "%1$@ refills are due"), {dueCount});
    }
    const char* sentence = oneDue         ? localizable("1 refill is due, 1 is overdue")
                           : overdue == 1 ? localizable("%1$@ refills are due, 1 is overdue")
                                          : localizable("%1$@ refills are due, %2$@ are overdue");
    return formatted(localized(sentence), {dueCount, overdueCount});
}

}  // namespace kpx
