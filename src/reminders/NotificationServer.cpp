#include "reminders/NotificationServer.h"

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
const QString tagHint = QStringLiteral("x-dunst-stack-tag");
const QString buttonAction = QStringLiteral("show-");
constexpr int untilAnswered = std::numeric_limits<int>::max();

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
QString icon() {
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString file = QDir::cleanPath(
        programs.filePath(QStringLiteral("../share/icons/hicolor/scalable/apps/%1.svg").arg(applicationName)));
    return QFile::exists(file) ? file : applicationName;
}

}  // namespace

QString notificationBody(const std::string& text, bool serverReadsMarkup) {
    QString body = QString::fromStdString(text);
    body.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    for (QChar& character : body) {
        if (character.category() == QChar::Other_Control && character != QLatin1Char('\n')) {
            character = QChar::ReplacementCharacter;
        }
    }
    return serverReadsMarkup ? body.toHtmlEscaped() : body;
}

NotificationServer::NotificationServer(const QDBusConnection& bus) : m_bus(bus) {
    const auto busCall =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
    m_busIdentity = QDBusReply<QString>(m_bus.call(busCall)).value();
    auto* watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) { ownerChanged(newOwner); });
    m_bus.connect(service, path, interface, QStringLiteral("ActivationToken"), this,
                  SLOT(ActivationToken(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("ActionInvoked"), this, SLOT(ActionInvoked(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("NotificationClosed"), this,
                  SLOT(NotificationClosed(uint, uint)));
}

std::string NotificationServer::identity() const {
    const QDBusReply<QString> owner = m_bus.interface()->serviceOwner(service);
    return owner.isValid() ? (m_busIdentity + QLatin1Char('/') + owner.value()).toStdString() : std::string();
}

bool NotificationServer::replacesByTag() const { return m_capabilities.contains(tagHint); }

void NotificationServer::prepare() {
    if (m_preparing) {
        return;
    }
    m_preparing = true;
    whenAnswered<QStringList>(this, m_bus.asyncCall(call(QStringLiteral("GetCapabilities"))),
                              [this, owner = m_owner](const QDBusPendingReply<QStringList>& reply) {
                                  if (owner != m_owner) {
                                      return;  // the answer for one that is gone, or that there was none yet
                                  }
                                  m_preparing = false;
                                  if (reply.isError()) {
                                      qWarning() << "No notification server yet:" << reply.error().message();
                                      return;
                                  }
                                  m_capabilities = reply.value();
                                  m_ready = true;
                                  ready();
                              });
}

void NotificationServer::post(const Reminder& reminder, const ReminderContent& content,
                              std::function<void(std::optional<std::uint32_t>)> done) {
    QVariantMap hints{{QStringLiteral("desktop-entry"), applicationName},
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
        actions = {QStringLiteral("default"), QStringLiteral("Show"), buttonAction + identifier,
                   QStringLiteral("Show")};
    }
    constexpr uint replacesNone = 0;
    constexpr int staysUntilActedUpon = 0;
    QDBusMessage message = call(QStringLiteral("Notify"));
    message << QStringLiteral("Velmora") << replacesNone << icon() << notificationBody(content.title, false)
            << notificationBody(content.text, m_capabilities.contains(QStringLiteral("body-markup"))) << actions
            << hints << staysUntilActedUpon;
    m_answered = std::move(done);
    // A server may be slow, but it answers or it ends: with a time limit nobody could tell whether it will show
    // the notification after all.
    whenAnswered<uint>(this, m_bus.asyncCall(message, untilAnswered),
                       [this, post = ++m_posts](const QDBusPendingReply<uint>& reply) {
                           if (post != m_posts) {
                               return;  // from a server that is gone
                           }
                           if (reply.isError()) {
                               qWarning() << "The notification was not shown:" << reply.error().message();
                           }
                           answer(reply.isError() ? std::nullopt : std::optional<std::uint32_t>(reply.value()));
                       });
}

void NotificationServer::answer(std::optional<std::uint32_t> notification) {
    ++m_posts;
    if (const auto answered = std::exchange(m_answered, nullptr)) {
        answered(notification);
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
    m_ready = false;
    m_preparing = false;
    m_tokens.clear();
    gone();
    answer(std::nullopt);
    if (!newOwner.isEmpty()) {
        prepare();
    }
}

}  // namespace kpx
