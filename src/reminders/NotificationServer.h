#pragma once

#include "reminders/ReminderFolder.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>

namespace kpx {

/// The text of a notification as the server is to be given it: carriage returns are line breaks, control
/// characters stand as replacement characters, and what a server that reads markup would take for markup is
/// escaped.
QString notificationBody(const std::string& text, bool serverReadsMarkup);

/// The desktop's notification server, which may come, go and be replaced at any time.
class NotificationServer : public QObject {
    Q_OBJECT

public:
    explicit NotificationServer(const QDBusConnection& bus);

    /// Names this very run of the server on this very bus, wherever and whenever it is compared; "" when none
    /// runs. The numbers it gives to notifications mean nothing to another.
    std::string identity() const;

    /// Whether it runs and has said what it can do.
    bool isReady() const { return m_ready; }
    /// Starts it if need be and asks what it can do; then, or whenever a server appears later, `ready` is called.
    void prepare();
    /// Whether a notification with the tag of an open one takes its place, so that it is never seen twice.
    bool replacesByTag() const;

    /// `done` gets the server's number, or none when the notification is not on the screen: the server ended.
    /// The message is on its way when this returns. REQUIRES: isReady(), and no other post under way.
    void post(const Reminder& reminder, const ReminderContent& content,
              std::function<void(std::optional<std::uint32_t>)> done);
    void close(std::uint32_t notification);

    std::function<void()> ready;
    /// The server ended or another took its place; all it showed is gone.
    std::function<void()> gone;
    /// `identifier` is the reminder's when the server told it, else empty; `token` lets a window come to the
    /// front, or is empty.
    std::function<void(std::uint32_t notification, const std::string& identifier, const QString& token)> clicked;
    std::function<void(std::uint32_t notification)> closed;

private Q_SLOTS:
    void ActivationToken(uint notification, const QString& token);
    void ActionInvoked(uint notification, const QString& action);
    void NotificationClosed(uint notification, uint reason);

private:
    void ownerChanged(const QString& newOwner);
    void answer(std::optional<std::uint32_t> notification);

    QDBusConnection m_bus;
    QString m_busIdentity;
    QStringList m_capabilities;
    QHash<uint, QString> m_tokens;                                 // of clicks whose action has not arrived yet
    std::function<void(std::optional<std::uint32_t>)> m_answered;  // of the post under way; else empty
    int m_posts = 0;                                               // counts them, and their answers
    int m_owner = 0;                                               // counts the servers and their ends
    bool m_ready = false;
    bool m_preparing = false;
};

}  // namespace kpx
