#include "agent/NotificationServer.h"

#include "reminders/Names.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QVariantMap>

#include <limits>
#include <utility>

namespace kpx {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString interface = service;
const QString dbusErrors = QStringLiteral("org.freedesktop.DBus.Error.");
const QString tagHint = QStringLiteral("x-dunst-stack-tag");
const QString buttonAction = QStringLiteral("show-");
constexpr int untilAnswered = std::numeric_limits<int>::max();
constexpr std::chrono::seconds patience{30};
constexpr QChar rightToLeftMark(0x200F);

QDBusMessage call(const QString& method) { return QDBusMessage::createMethodCall(service, path, interface, method); }

template <typename Reply, typename Done>
void whenAnswered(QObject* parent, const QDBusPendingCall& pending, Done done) {
    auto* watcher = new QDBusPendingCallWatcher(pending, parent);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, parent, [watcher, done] {
        watcher->deleteLater();
        done(QDBusPendingReply<Reply>(*watcher));
    });
}

/// Servers look an icon's name up only where the desktop looks; the file stands beside the program in any case.
/// A picture, since a small server cannot read a drawing.
QString icon() {
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString file = QDir::cleanPath(programs.filePath(
        QStringLiteral("../share/icons/hicolor/128x128/apps/%1.png").arg(QLatin1String(applicationName))));
    return QFile::exists(file) ? file : QString::fromLatin1(applicationName);
}

/// Whether there is nobody to ask, rather than somebody who does not do it.
bool isNobody(const QDBusError& error) {
    return error.type() == QDBusError::ServiceUnknown || error.type() == QDBusError::NoServer ||
           error.type() == QDBusError::Disconnected || error.name() == dbusErrors + QStringLiteral("NameHasNoOwner") ||
           error.name().startsWith(dbusErrors + QStringLiteral("Spawn."));
}

}  // namespace

QString notificationBody(const std::string& text, bool serverReadsMarkup, bool rightToLeft) {
    QString body = QString::fromStdString(text);
    body.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    for (QChar& character : body) {
        if (character.category() == QChar::Other_Control && character != QLatin1Char('\n')) {
            character = QChar::ReplacementCharacter;
        }
    }
    if (rightToLeft) {
        body = rightToLeftMark + body.replace(QLatin1Char('\n'), QLatin1Char('\n') + QString(rightToLeftMark));
    }
    return serverReadsMarkup ? body.toHtmlEscaped() : body;
}

NotificationServer::NotificationServer(const QDBusConnection& bus, AgentClock& clock) : m_bus(bus), m_clock(clock) {
    const auto busCall =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
    m_busIdentity = QDBusReply<QString>(m_bus.call(busCall)).value();
    auto* watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) { ownerChanged(newOwner); });
    // With its signature each: the toolkit would end the program over arguments that do not fit the slot.
    m_bus.connect(service, path, interface, QStringLiteral("ActivationToken"), QStringLiteral("us"), this,
                  SLOT(ActivationToken(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("ActionInvoked"), QStringLiteral("us"), this,
                  SLOT(ActionInvoked(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("NotificationClosed"), QStringLiteral("uu"), this,
                  SLOT(NotificationClosed(uint, uint)));
}

std::string NotificationServer::identity() const {
    const QDBusReply<QString> owner = m_bus.interface()->serviceOwner(service);
    return owner.isValid() ? (m_busIdentity + QLatin1Char('/') + owner.value()).toStdString() : std::string();
}

bool NotificationServer::replacesByTag() const { return m_capabilities.contains(tagHint); }

void NotificationServer::prepare() {
    if (!m_preparing) {
        ask(false);
    }
}

void NotificationServer::ask(bool isNew) {
    m_preparing = true;
    const auto fail = [this, question = ++m_questions](Failure failure) {
        if (question == m_questions) {
            ++m_questions;
            m_preparing = false;
            failed(failure);
        }
    };
    m_clock.callAfter(patience, [fail] { fail(Failure::Refused); });
    whenAnswered<QStringList>(this, m_bus.asyncCall(call(QStringLiteral("GetCapabilities")), untilAnswered),
                              [this, fail, isNew, question = m_questions](const QDBusPendingReply<QStringList>& reply) {
                                  if (reply.isError()) {
                                      qWarning() << "No notification server:" << reply.error().message();
                                      return fail(isNobody(reply.error()) ? Failure::NoServer : Failure::Refused);
                                  }
                                  if (question != m_questions) {
                                      return;  // too late, or of one that is gone
                                  }
                                  ++m_questions;
                                  m_preparing = false;
                                  m_capabilities = reply.value();
                                  m_ready = true;
                                  ready(isNew);
                              });
}

void NotificationServer::post(const Reminder& reminder, const ReminderContent& content, const Wording& wording,
                              std::function<void(const Posted&)> done) {
    QVariantMap hints{{QStringLiteral("desktop-entry"), QString::fromLatin1(applicationName)},
                      {QStringLiteral("urgency"), QVariant::fromValue<uchar>(1)}};
    if (content.sound) {
        hints.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
    }
    const QString identifier = QString::fromStdString(reminder.identifier);
    if (replacesByTag()) {
        hints.insert(tagHint, identifier);
    }
    QStringList actions;
    if (m_capabilities.contains(QStringLiteral("actions"))) {
        // Some servers show no button for the default action, others know nothing but buttons.
        actions = {QStringLiteral("default"), wording.show, buttonAction + identifier, wording.show};
    }
    constexpr uint replacesNone = 0;
    constexpr int staysUntilActedUpon = 0;
    QDBusMessage message = call(QStringLiteral("Notify"));
    message << QStringLiteral("Velmora") << replacesNone << icon()
            << notificationBody(content.title, false, wording.isRightToLeft)
            << notificationBody(content.text, m_capabilities.contains(QStringLiteral("body-markup")),
                                wording.isRightToLeft)
            << actions << hints << staysUntilActedUpon;
    m_answered = std::move(done);
    const int post = ++m_posts;
    m_clock.callAfter(patience, [this, post] {
        if (post == m_posts) {
            qWarning() << "The notification server does not answer.";
            m_ready = false;  // before it is given anything more, it shall show that it does
            answer(Failure::Refused);
        }
    });
    whenAnswered<uint>(
        this, m_bus.asyncCall(message, untilAnswered),
        [this, post, owner = m_owner, identifier = reminder.identifier](const QDBusPendingReply<uint>& reply) {
            if (post != m_posts) {
                if (owner == m_owner && !reply.isError()) {
                    answeredLate(identifier, reply.value());
                }
                return;
            }
            if (!reply.isError()) {
                return answer(std::uint32_t(reply.value()));
            }
            qWarning() << "The notification was not shown:" << reply.error().message();
            answer(isNobody(reply.error()) ? Failure::NoServer : Failure::Refused);
        });
}

void NotificationServer::answer(const Posted& posted) {
    ++m_posts;
    if (const auto answered = std::exchange(m_answered, nullptr)) {
        answered(posted);
    }
}

void NotificationServer::close(std::uint32_t notification) {
    QDBusMessage message = call(QStringLiteral("CloseNotification"));
    message.setAutoStartService(false);
    m_bus.asyncCall(message << notification);
}

void NotificationServer::ActivationToken(uint notification, const QString& token) {
    m_tokens.insert(notification, token);
}

void NotificationServer::ActionInvoked(uint notification, const QString& action) {
    const QString identifier = action.startsWith(buttonAction) ? action.mid(buttonAction.size()) : QString();
    clicked(notification, identifier.toStdString(), m_tokens.take(notification));
}

void NotificationServer::NotificationClosed(uint notification, uint) {
    m_tokens.remove(notification);
    closed(notification);
}

void NotificationServer::ownerChanged(const QString& newOwner) {
    ++m_owner;
    ++m_questions;
    const bool wasAsked = std::exchange(m_preparing, false);
    m_ready = false;
    m_tokens.clear();
    if (!newOwner.isEmpty()) {
        ask(true);
    }
    gone();
    answer(Failure::Refused);
    if (newOwner.isEmpty() && wasAsked) {
        failed(Failure::Refused);
    }
}

}  // namespace kpx
