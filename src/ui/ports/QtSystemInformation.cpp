#include "ui/ports/QtSystemInformation.h"

#include <QDBusConnection>
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

/// Nothing where no portal answers.
std::optional<uint> readSetting(const QString& key) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return std::nullopt;
    }
    // A desktop without a portal must not hold up the first window.
    constexpr int timeOutInMilliseconds = 500;
    for (const char* method : {"ReadOne", "Read"}) {
        QDBusMessage call =
            QDBusMessage::createMethodCall(portal, portalPath, settingsInterface, QLatin1String(method));
        call << appearance << key;
        const QDBusMessage reply = bus.call(call, QDBus::Block, timeOutInMilliseconds);
        if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
            return unwrapped(reply.arguments().constFirst()).toUInt();
        }
        if (reply.errorName() != QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod")) {
            break;
        }
    }
    return std::nullopt;
}

}  // namespace

QtSystemInformation::QtSystemInformation() : m_region(variableOfProcess) {
    // A portal that does not answer is not asked twice.
    if (const auto scheme = readSetting(colorScheme)) {
        m_scheme = {.dark = *scheme == preferDark, .highContrast = readSetting(contrast) == preferHighContrast};
    }
    QDBusConnection::sessionBus().connect(portal, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                                          SLOT(settingChanged(QDBusMessage)));
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
    const uint value = unwrapped(arguments[2]).toUInt();
    Scheme scheme = m_scheme;
    if (arguments[1].toString() == colorScheme) {
        scheme.dark = value == preferDark;
    } else if (arguments[1].toString() == contrast) {
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
