#include "tests/reminders/session/Neighbours.h"

#include "tests/reminders/session/Session.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>

#include <gtest/gtest.h>

#include <algorithm>

namespace kpx {

namespace {

const QString notifications = QStringLiteral("org.freedesktop.Notifications");
const QString tagHint = QStringLiteral("x-dunst-stack-tag");

}  // namespace

NotificationDaemonDouble::NotificationDaemonDouble(const QDBusConnection& bus, const QStringList& capabilities)
    : m_bus(bus), m_capabilities(capabilities) {
    m_bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
}

NotificationDaemonDouble::~NotificationDaemonDouble() {
    m_bus.unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
}

void NotificationDaemonDouble::appear() { EXPECT_TRUE(m_bus.registerService(notifications)); }

void NotificationDaemonDouble::disappear() {
    m_bus.unregisterService(notifications);
    open.clear();
}

int NotificationDaemonDouble::timesShown(const QString& body) const {
    return static_cast<int>(std::ranges::count(shown, body, &Notification::body));
}

uint NotificationDaemonDouble::numberOf(const QString& body) const {
    for (const auto& [number, notification] : open) {
        if (notification.body == body) {
            return number;
        }
    }
    return 0;
}

void NotificationDaemonDouble::click(uint number, const QString& action, const QString& token) {
    if (!token.isEmpty()) {
        Q_EMIT ActivationToken(number, token);
    }
    Q_EMIT ActionInvoked(number, action);
}

void NotificationDaemonDouble::dismiss(uint number) {
    constexpr uint byTheUser = 2;
    open.erase(number);
    Q_EMIT NotificationClosed(number, byTheUser);
}

void NotificationDaemonDouble::sendOdd(const QString& signal, const QVariantList& arguments) {
    QDBusMessage message =
        QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/Notifications"), notifications, signal);
    message.setArguments(arguments);
    EXPECT_TRUE(m_bus.send(message));
}

bool NotificationDaemonDouble::endsAtThisStep() {
    if (m_stepsLeft == 0 || --m_stepsLeft > 0) {
        return m_hasEnded;
    }
    m_hasEnded = true;
    setDelayedReply(true);
    disappear();
    return true;
}

QStringList NotificationDaemonDouble::GetCapabilities() {
    static_cast<void>(endsAtThisStep());
    return m_capabilities;
}

uint NotificationDaemonDouble::Notify(const QString&, uint replaces, const QString& icon, const QString& title,
                                      const QString& body, const QStringList& actions, const QVariantMap& hints,
                                      int timeout) {
    EXPECT_EQ(replaces, 0U);
    if (endsAtThisStep()) {
        return 0;
    }
    if (isRefusing) {
        ++refused;
        sendErrorReply(QDBusError::Failed, QStringLiteral("not now"));
        return 0;
    }
    if (isSilent) {
        setDelayedReply(true);
        ++silentlyTaken;
        return 0;
    }
    Notification notification{++m_lastNumber, title, body, icon, actions, hints, timeout};
    const QString tag = hints.value(tagHint).toString();
    for (auto& [number, other] : open) {
        if (!tag.isEmpty() && m_capabilities.contains(tagHint) && other.hints.value(tagHint).toString() == tag) {
            notification.number = number;
            if (other.body != notification.body) {
                shown.push_back(notification);
            }
            other = notification;  // in place: the same again is nothing new on the screen
            return number;
        }
    }
    shown.push_back(notification);
    open.emplace(notification.number, notification);
    static_cast<void>(endsAtThisStep());
    return notification.number;
}

void NotificationDaemonDouble::CloseNotification(uint number) {
    constexpr uint byACall = 3;
    if (!endsAtThisStep() && open.erase(number) != 0) {
        Q_EMIT NotificationClosed(number, byACall);
    }
}

ApplicationDouble::~ApplicationDouble() {
    m_bus.unregisterObject(theProgramPath);
    m_bus.unregisterService(theProgram);
}

void ApplicationDouble::appear() {
    m_bus.registerObject(theProgramPath, this, QDBusConnection::ExportAllSlots);
    EXPECT_TRUE(m_bus.registerService(theProgram));
}

void ApplicationDouble::ActivateAction(const QString& action, const QVariantList& parameters,
                                       const QVariantMap& platformData) {
    ASSERT_EQ(parameters.size(), 1);
    const auto clicked = qdbus_cast<QVariantMap>(parameters.first());
    const Click reminder{clicked.value(QStringLiteral("identifier")).toString(),
                         clicked.value(QStringLiteral("title")).toByteArray().toStdString(),
                         clicked.value(QStringLiteral("text")).toByteArray().toStdString(), platformData};
    if (action == QLatin1String(showAction)) {
        windows.push_back(reminder);
        return;
    }
    ASSERT_EQ(action.toStdString(), clickedAction);
    clicks.push_back(reminder);
    if (!withdraws) {
        return;
    }
    for (const char* method : {"RemoveDelivered", "RemoveScheduled"}) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(theAgent, theAgentPath, theAgent, QString::fromLatin1(method));
        m_bus.asyncCall(message << clicks.back().identifier << QByteArray::fromStdString(clicks.back().text));
    }
}

}  // namespace kpx
