#include "ui/ports/QtUserNotificationCenter.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDateTime>
#include <QDebug>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

namespace kpx {

namespace {

// The agent knows the same names.
const QString agentName = QStringLiteral("example.velmora.Velmora.Reminders");
const QString agentPath = QStringLiteral("/example/velmora/Velmora/Reminders");
constexpr int patienceInMilliseconds = 3000;

bool startFromBeside(const QStringList& arguments) {
    return QProcess::startDetached(QCoreApplication::applicationDirPath() + QStringLiteral("/velmora-reminders"),
                                   arguments);
}

bool isRunning(const QDBusConnection& bus) { return bus.interface()->isServiceRegistered(agentName); }

/// Whether the agent, started from beside this program, has come to the bus.
bool comesFromBeside(const QDBusConnection& bus) {
    QElapsedTimer timer;
    timer.start();
    if (!startFromBeside({})) {
        return false;
    }
    while (!isRunning(bus)) {
        if (timer.hasExpired(patienceInMilliseconds)) {
            return false;
        }
        constexpr unsigned long pauseInMilliseconds = 10;
        QThread::msleep(pauseInMilliseconds);
    }
    return true;
}

void callAgent(const QString& method, const QVariantList& arguments) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    QDBusMessage message = QDBusMessage::createMethodCall(agentName, agentPath, agentName, method);
    message.setArguments(arguments);
    QDBusMessage reply = bus.call(message, QDBus::Block, patienceInMilliseconds);
    const bool isUnknown = reply.type() == QDBusMessage::ErrorMessage && bus.isConnected() && !isRunning(bus);
    if (isUnknown && comesFromBeside(bus)) {
        reply = bus.call(message, QDBus::Block, patienceInMilliseconds);
    }
    if (reply.type() == QDBusMessage::ErrorMessage) {
        qWarning().noquote() << "The reminder agent did not do" << method << "-" << reply.errorMessage();
    }
}

// Bytes, not texts: a text on the bus cannot hold everything that a name may.
QByteArray bytes(const std::string& text) { return QByteArray::fromStdString(text); }

QVariantList whichOne(const UserNotification& notification) {
    return {QString::fromStdString(notification.identifier), bytes(notification.informativeText)};
}

}  // namespace

void QtUserNotificationCenter::scheduleNotification(const UserNotification& notification) {
    const auto day = QDateTime::fromMSecsSinceEpoch(qint64(notification.deliveryDate.secondsSince1970() * 1000)).date();
    callAgent(QStringLiteral("Schedule"), {bytes(notification.title), bytes(notification.informativeText),
                                           day.toString(Qt::ISODate), notification.defaultSound});
}

void QtUserNotificationCenter::removeDeliveredNotification(const UserNotification& notification) {
    callAgent(QStringLiteral("RemoveDelivered"), whichOne(notification));
}

void QtUserNotificationCenter::removeScheduledNotification(const UserNotification& notification) {
    callAgent(QStringLiteral("RemoveScheduled"), whichOne(notification));
}

void QtUserNotificationCenter::wakeAgent() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected() && !isRunning(bus)) {
        startFromBeside({QStringLiteral("--if-any")});
    }
}

}  // namespace kpx
