#include "ui/SingleInstance.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDebug>

namespace kpx {

namespace {

// The reminder agent knows the same names.
const QString applicationName = QStringLiteral("example.velmora.Velmora");
const QString applicationPath = QStringLiteral("/example/velmora/Velmora");
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");

/// What lets a window come to the front, by its key in the platform data and its environment variable.
struct Token {
    QString key;
    const char* variable;
};
const Token tokens[] = {{QStringLiteral("activation-token"), "XDG_ACTIVATION_TOKEN"},
                        {QStringLiteral("desktop-startup-id"), "DESKTOP_STARTUP_ID"}};

QVariantMap ownPlatformData() {
    QVariantMap data;
    for (const Token& token : tokens) {
        if (qEnvironmentVariableIsSet(token.variable)) {
            data.insert(token.key, qEnvironmentVariable(token.variable));
        }
    }
    return data;
}

void useTokens(const QVariantMap& platformData) {
    for (const Token& token : tokens) {
        const QString value = platformData.value(token.key).toString();
        if (!value.isEmpty()) {
            qputenv(token.variable, value.toUtf8());
        }
    }
}

}  // namespace

bool SingleInstance::claim() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qInfo() << "No session bus: clicked reminders cannot reach this program.";
        return true;
    }
    bus.registerObject(applicationPath, this, QDBusConnection::ExportAllSlots);
    if (bus.registerService(applicationName)) {
        return true;
    }
    QDBusMessage message = QDBusMessage::createMethodCall(applicationName, applicationPath, applicationInterface,
                                                          QStringLiteral("Activate"));
    bus.call(message << ownPlatformData());
    return false;
}

void SingleInstance::Activate(const QVariantMap& platformData) {
    useTokens(platformData);
    if (activated) {
        activated();
    }
}

void SingleInstance::Open(const QStringList&, const QVariantMap& platformData) { Activate(platformData); }

void SingleInstance::ActivateAction(const QString& action, const QVariantList& parameters,
                                    const QVariantMap& platformData) {
    Activate(platformData);
    if (action != QStringLiteral("reminder") || parameters.isEmpty() || !reminderClicked) {
        return;
    }
    const auto clicked = qdbus_cast<QVariantMap>(parameters.first());
    UserNotification notification;
    notification.identifier = clicked.value(QStringLiteral("identifier")).toString().toStdString();
    notification.title = clicked.value(QStringLiteral("title")).toByteArray().toStdString();
    notification.informativeText = clicked.value(QStringLiteral("text")).toByteArray().toStdString();
    reminderClicked(notification);
}

}  // namespace kpx
