#include "agent/HandOver.h"

#include "reminders/Names.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDebug>
#include <QProcess>

#include <limits>

namespace kpx {

namespace {

void startFromBeside() {
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/velmora");
    if (!QProcess::startDetached(program, {})) {
        qWarning() << "A reminder was clicked, and the program cannot be started:" << program;
    }
}

bool isNotRunning(const QDBusError& error) {
    return error.type() == QDBusError::ServiceUnknown ||
           error.name().startsWith(QStringLiteral("org.freedesktop.DBus.Error.Spawn."));
}

}  // namespace

HandOver::HandOver(const QDBusConnection& bus) : m_bus(bus) {
    auto* watcher = new QDBusServiceWatcher(QString::fromLatin1(applicationName), m_bus,
                                            QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] { applicationAppeared(); });
}

void HandOver::give(const char* action, const std::string& identifier, const ReminderContent& content,
                    const QString& token, std::function<void(bool done)> answered) {
    // Bytes, not texts: a text on the bus cannot hold everything that a name may.
    const QVariantMap reminder{{QStringLiteral("identifier"), QString::fromStdString(identifier)},
                               {QStringLiteral("title"), QByteArray::fromStdString(content.title)},
                               {QStringLiteral("text"), QByteArray::fromStdString(content.text)}};
    QVariantMap platformData;
    if (!token.isEmpty()) {
        platformData = {{QStringLiteral("activation-token"), token}, {QStringLiteral("desktop-startup-id"), token}};
    }
    QDBusMessage message =
        QDBusMessage::createMethodCall(QString::fromLatin1(applicationName), QString::fromLatin1(applicationPath),
                                       QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
    message << QString::fromLatin1(action) << QVariantList{reminder} << platformData;
    // An alert of the program may wait for the user before the answer comes.
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, std::numeric_limits<int>::max()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answered] {
        watcher->deleteLater();
        const QDBusError error = watcher->isError() ? watcher->error() : QDBusError();
        answered(!watcher->isError());
        if (isNotRunning(error)) {
            startFromBeside();
        } else if (error.isValid()) {
            qWarning() << "The program did not take the reminder:" << error.message();
        }
    });
}

}  // namespace kpx
