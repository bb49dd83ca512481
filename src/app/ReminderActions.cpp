#include "app/KPXAppDelegate.h"
#include "region/DateUtilities.h"
#include "schedule/Reminder.h"

namespace kpx {

namespace {

constexpr std::size_t captionItem = 0;
constexpr std::size_t remindItem = 1;

}  // namespace

void KPXAppDelegate::menuNeedsUpdate(Menu& menu) {
    if (&menu != &outlets.contextMenuTab2) {
        return;
    }
    const Record* row = clickedScheduleRow();
    const auto caption =
        reminderCaption(row != nullptr, row ? row->date("nextdate") : std::nullopt, environment(), m_strings);
    menu.setItemTitle(captionItem, caption.caption);
    menu.setItemEnabled(remindItem, caption.canRemind);
    if (caption.canRemind) {
        menu.setItemTitle(remindItem, localized("Send a reminder to the System Notification Center for this item"));
    } else {
        menu.setItemEnabled(captionItem, true);
    }
}

void KPXAppDelegate::respondToContextMenuTab2(int itemIndex) {
    if (itemIndex != static_cast<int>(remindItem)) {
        return;
    }
    const Record* row = clickedScheduleRow();
    const auto nextFillDate = row ? row->date("nextdate") : std::nullopt;
    if (!nextFillDate) {
        return;
    }
    const Environment here = environment();
    const std::string day = mediumStyleFromDate(*nextFillDate, here);
    doSheetAlert(
        mainWindow,
        localized("When the reminder appears in Notification Center, click on it to open KPX and dismiss it"),
        m_strings.sentence("Reminder Scheduled for:  %@", {day}, localized("Reminder Scheduled for:") + "  " + day));
    UserNotification notification;
    notification.title = localized("Prescription 'Next Fill Date' Reminder");
    notification.informativeText = reminderText({.patient = row->text("patientTabTwo").value_or("").string(),
                                                 .drug = row->text("drugTabTwo").value_or("").string()},
                                                m_strings);
    notification.deliveryDate = reminderDeliveryDate(*nextFillDate, here);
    notification.repeatsDaily = true;
    notification.defaultSound = true;
    m_ports.notifications.scheduleNotification(notification);
}

void KPXAppDelegate::userNotificationCenter(const UserNotification& didActivateNotification) {
    respondToUserNotification(didActivateNotification);
}

bool KPXAppDelegate::shouldPresentNotification([[maybe_unused]] const UserNotification& notification) const {
    return true;
}

void KPXAppDelegate::respondToUserNotification(const UserNotification& notification) {
    if (notification.isStanding) {
        showLatestFillsOfAll();
        m_ports.notifications.removeDeliveredNotification(notification);
        return;
    }
    if (const auto prescription = prescriptionFromReminderText(notification.informativeText)) {
        outlets.theTabView.selectTab(Outlets::scheduleTab);
        outlets.patientPopTab2.selectItemWithTitle(prescription->patient);
        if (outlets.patientPopTab2.indexOfSelectedItem() >= 0) {
            patientPopUpSelected(outlets.patientPopTab2);
        }
        outlets.drugNamePopTab2.selectItemWithTitle(prescription->drug);
        respondToShowBtnPane2();
    }
    m_ports.notifications.removeDeliveredNotification(notification);
    m_ports.notifications.removeScheduledNotification(notification);
    if (outlets.theRemindersSheet.isOpen()) {
        reloadReminders();
    }
}

const Record* KPXAppDelegate::clickedScheduleRow() const {
    const int clicked = outlets.tableViewTab2.clickedRow();
    return clicked >= 0 && clicked < static_cast<int>(maintDueArrayForTV.size())
               ? &maintDueArrayForTV[static_cast<std::size_t>(clicked)]
               : nullptr;
}

}  // namespace kpx
