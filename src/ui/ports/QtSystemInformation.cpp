#include "ui/ports/QtSystemInformation.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QVariant>

namespace kpx {

namespace {

constexpr uint preferDark = 1;
constexpr uint preferHighContrast = 1;

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const QString contrast = QStringLiteral("contrast");

/// Older portals wrap the value twice.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>()) {
        value = qvariant_cast<QDBusVariant>(value).variant();
    }
    return value;
}

const QString readMethod = QStringLiteral("ReadOne");
/// What older portals have instead.
const QString olderReadMethod = QStringLiteral("Read");

QDBusMessage readCall(const QString& method, const QString& key) {
    QDBusMessage call = QDBusMessage::createMethodCall(portal, portalPath, settingsInterface, method);
    call << appearance << key;
    return call;
}

bool hasError(const QDBusMessage& reply, const char* name) {
    return reply.errorName() == QStringLiteral("org.freedesktop.DBus.Error.") + QLatin1String(name);
}

/// A portal's answer, or an error. A desktop without one must not hold up the first window.
QDBusMessage readSetting(const QString& key) {
    constexpr int timeOutInMilliseconds = 500;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const QDBusMessage reply = bus.call(readCall(readMethod, key), QDBus::Block, timeOutInMilliseconds);
    return hasError(reply, "UnknownMethod")
               ? bus.call(readCall(olderReadMethod, key), QDBus::Block, timeOutInMilliseconds)
               : reply;
}

}  // namespace

QtSystemInformation::QtSystemInformation() : m_region(variableOfProcess) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(portal, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QDBusMessage)));
    bool answersInTime = bus.isConnected();
    for (const QString& key : {colorScheme, contrast}) {
        const QDBusMessage reply = answersInTime ? readSetting(key) : QDBusMessage();
        answersInTime = answersInTime && !hasError(reply, "NoReply");
        if (answersInTime) {
            takeAnswer(key, reply);
        } else if (bus.isConnected()) {
            // The desktop may only be starting it. The window is there meanwhile.
            askWithoutWaiting(key, readMethod);
        }
    }
}

void QtSystemInformation::askWithoutWaiting(const QString& key, const QString& method) {
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(readCall(method, key)), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, key, method](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusMessage reply = finished->reply();
        if (method == readMethod && hasError(reply, "UnknownMethod")) {
            askWithoutWaiting(key, olderReadMethod);
        } else {
            takeAnswer(key, reply);
        }
    });
}

void QtSystemInformation::takeAnswer(const QString& key, const QDBusMessage& reply) {
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
        takeSetting(key, reply.arguments().constFirst());
    }
}

SystemInformation::Version QtSystemInformation::systemVersion() {
    // A fixed level, not the kernel's number: what the program asks of it is whether the desktop is recent
    // enough for a dark appearance, and a kernel's 6.x would read as too old and switch that off for good.
    return {11, 0};
}

Region QtSystemInformation::region() { return m_region.region(); }

std::string QtSystemInformation::appearanceStyle() { return m_scheme.dark ? "Dark" : ""; }

void QtSystemInformation::settingChanged(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    if (arguments.size() != 3 || arguments[0].toString() != appearance) {
        return;
    }
    takeSetting(arguments[1].toString(), arguments[2]);
}

void QtSystemInformation::takeSetting(const QString& key, const QVariant& answered) {
    const uint value = unwrapped(answered).toUInt();
    Scheme scheme = m_scheme;
    if (key == colorScheme) {
        scheme.dark = value == preferDark;
    } else if (key == contrast) {
        scheme.highContrast = value == preferHighContrast;
    }
    setScheme(scheme);
}

void QtSystemInformation::setScheme(const Scheme& scheme) {
    if (m_scheme == scheme) {
        return;
    }
    m_scheme = scheme;
    Q_EMIT schemeChanged(scheme);
    if (appearanceDidChange) {
        appearanceDidChange();
    }
}

}  // namespace kpx
