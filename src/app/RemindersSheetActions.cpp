#include "app/KPXAppDelegate.h"
#include "core/Sorting.h"
#include "schedule/RefillSchedule.h"
#include "schedule/RefillsToOrder.h"
#include "schedule/Reminder.h"

#include <algorithm>
#include <iterator>

namespace kpx {

void KPXAppDelegate::showScheduledReminders() {
    reloadReminders();
    displaySheet(outlets.theRemindersSheet);
}

void KPXAppDelegate::reloadReminders() {
    remindersArrayForTV.clear();
    for (const UserNotification& reminder : m_ports.notifications.scheduledNotifications()) {
        remindersArrayForTV.push_back(reminderRow(reminder.informativeText, reminder.deliveryDate));
    }
    sortByDescriptors(remindersArrayForTV, {{"when", true, Comparison::Plain}}, environment());
    outlets.tableViewReminders.reloadData();
    outlets.removeReminderBtn.setEnabled(false);
}

void KPXAppDelegate::removeSelectedReminder() {
    const int selected = outlets.tableViewReminders.selectedRow();
    if (selected < 0 || selected >= static_cast<int>(remindersArrayForTV.size())) {
        return;
    }
    const Record& row = remindersArrayForTV[static_cast<std::size_t>(selected)];
    const std::vector<UserNotification> scheduled = m_ports.notifications.scheduledNotifications();
    // Of reminders that look the same, one is as good as another.
    const auto reminder = std::ranges::find_if(scheduled, [&](const UserNotification& candidate) {
        return reminderRow(candidate.informativeText, candidate.deliveryDate) == row;
    });
    if (reminder != scheduled.end()) {
        m_ports.notifications.removeDeliveredNotification(*reminder);
        m_ports.notifications.removeScheduledNotification(*reminder);
    }
    reloadReminders();
}

void KPXAppDelegate::setStandingReminderMenu() {
    std::vector<PopUpButton::Item> titles;
    std::ranges::transform(standingChoices, std::back_inserter(titles),
                           [this](const StandingChoice& choice) { return localized(choice.title); });
    outlets.standingReminder.setItems(std::move(titles));
    outlets.standingReminder.selectItemAtIndex(standingChoiceOfLead(m_ports.notifications.standingLead()));
}

void KPXAppDelegate::chooseStandingReminder() {
    const auto index = static_cast<std::size_t>(outlets.standingReminder.indexOfSelectedItem());
    m_ports.notifications.setStandingLead(standingChoices.at(index).lead);
}

void KPXAppDelegate::showLatestFillsOfAll() {
    setPatientPop(outlets.patientPopTab2);
    outlets.theTabView.selectTab(Outlets::scheduleTab);
    outlets.radioBtnTab2.selectCellWithTag(static_cast<int>(ScheduleMode::LatestFill));
    respondToShowBtnPane2();
}

}  // namespace kpx
