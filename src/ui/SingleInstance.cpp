#include "ui/SingleInstance.h"

#include "reminders/Names.h"
#include "ui/HandedOverReminder.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDebug>
#include <QElapsedTimer>
#include <QThread>

#include <algorithm>

namespace kpx {

namespace {

const QString busName = QString::fromLatin1(applicationName);
const QString busPath = QString::fromLatin1(applicationPath);
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");

/// The desktop entry's.
const QString scheduleAction = QStringLiteral("schedule");

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
    // Far more than any desktop's; with a variable of some size no program could be started any more.
    constexpr qsizetype longestToken = 4096;
    for (const Token& token : tokens) {
        const QString value = platformData.value(token.key).toString();
        if (!value.isEmpty() && value.size() <= longestToken) {
            qputenv(token.variable, value.toUtf8());
        }
    }
}

/// Whether the program that has the name took the call in time.
bool otherIsRaised(const QDBusConnection& bus, bool scheduleIsWanted, int milliseconds) {
    const QString method = scheduleIsWanted ? QStringLiteral("ActivateAction") : QStringLiteral("Activate");
    QDBusMessage message = QDBusMessage::createMethodCall(busName, busPath, applicationInterface, method);
    message.setAutoStartService(false);
    if (scheduleIsWanted) {
        message << scheduleAction << QVariantList();
    }
    message << ownPlatformData();
    return bus.call(message, QDBus::Block, milliseconds).type() == QDBusMessage::ReplyMessage;
}

}  // namespace

SingleInstance::~SingleInstance() { release(); }

bool SingleInstance::claim(bool scheduleIsWanted) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qInfo() << "No session bus: clicked reminders cannot reach this program.";
        return true;
    }
    bus.registerObject(busPath, this, QDBusConnection::ExportAllSlots);
    // The other one may just be ending, and the name be free a moment later.
    constexpr int patience = 2000;       // milliseconds that somebody waits for a window
    constexpr unsigned long pause = 50;  // milliseconds; one that refuses at once is not asked without end
    QElapsedTimer waited;
    waited.start();
    do {
        if (bus.registerService(busName)) {
            return true;
        }
        if (otherIsRaised(bus, scheduleIsWanted, std::max(1, patience - static_cast<int>(waited.elapsed())))) {
            return false;
        }
        QThread::msleep(pause);
    } while (waited.elapsed() < patience);
    qWarning() << "The program's name is taken by something that does not answer: this start goes on without it.";
    return true;
}

void SingleInstance::release() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(busName);
    bus.unregisterObject(busPath);
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
    if (action == scheduleAction) {
        Activate(platformData);
        if (scheduleWanted) {
            scheduleWanted();
        }
        return;
    }
    const bool isShow = action == QLatin1String(showAction);
    if (!isShow && action != QLatin1String(clickedAction)) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no action of this name."));
        return;
    }
    const auto reminder = handedOverReminder(parameters);
    if (!reminder) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("These parameters are no reminder."));
        return;
    }
    Activate(platformData);
    if (const auto& take = isShow ? reminderToBeShown : reminderClicked) {
        take(*reminder);
    }
}

}  // namespace kpx
