#include "ui/ports/QtUserNotificationCenter.h"

#include "ui/Conversions.h"

#include <QDebug>

namespace kpx {

namespace {

void logReminder(const char* deed, const UserNotification& notification) {
    qInfo().noquote() << deed << qstring(notification.informativeText);
}

}  // namespace

void QtUserNotificationCenter::scheduleNotification(const UserNotification& notification) {
    logReminder("schedule reminder:", notification);
}

void QtUserNotificationCenter::removeDeliveredNotification(const UserNotification& notification) {
    logReminder("remove delivered reminder:", notification);
}

void QtUserNotificationCenter::removeScheduledNotification(const UserNotification& notification) {
    logReminder("remove scheduled reminder:", notification);
}

}  // namespace kpx
