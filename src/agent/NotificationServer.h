#pragma once

#include "agent/AgentClock.h"
#include "reminders/ReminderFolder.h"
#include "reminders/Tries.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>
#include <variant>

class QDBusError;

namespace kpx {

/// The text of a notification as the server is to be given it: carriage returns are line breaks, control
/// characters stand as replacement characters, and what a server that reads markup would take for markup is
/// escaped. In a language written from right to left each line says so, also one that begins with a Latin name.
QString notificationBody(const std::string& text, bool serverReadsMarkup, bool rightToLeft = false);

/// What became of a notification: the server's number for it, or why it is not on the screen.
using Posted = std::variant<std::uint32_t, Failure>;

/// How the user's language has it around a reminder's own text.
struct Wording {
    QString show;  ///< on the button that is the click
    bool isRightToLeft = false;
};

/// The desktop's notification server, which may come, go and be replaced at any time, refuse, or not answer at all:
/// no answer within half a minute is a refusal.
class NotificationServer : public QObject {
    Q_OBJECT

public:
    NotificationServer(const QDBusConnection& bus, AgentClock& clock);

    /// Names this very run of the server on this very bus, wherever and whenever it is compared; "" when none
    /// runs. The numbers it gives to notifications mean nothing to another.
    std::string identity() const;

    /// Whether it runs, has said what it can do, and has answered since.
    bool isReady() const { return m_ready; }
    /// Starts it if need be and asks what it can do; then, or whenever a server appears later, `ready` is called,
    /// or else `failed`.
    void prepare();
    /// Whether a notification with the tag of an open one takes its place, so that it is never seen twice.
    bool replacesByTag() const;

    /// The message is on its way when this returns. REQUIRES: isReady(), and no other post under way.
    void post(const Reminder& reminder, const ReminderContent& content, const Wording& wording,
              std::function<void(const Posted&)> done);
    void close(std::uint32_t notification);

    /// `isNew` tells a server that has appeared by itself.
    std::function<void(bool isNew)> ready;
    std::function<void(Failure)> failed;
    /// The server ended or another took its place; all it showed is gone.
    std::function<void()> gone;
    /// The server's answer to a post that had been given up: the notification is on the screen after all.
    std::function<void(const std::string& identifier, std::uint32_t notification)> answeredLate;
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
    void ask(bool isNew);
    void answer(const Posted& posted);

    QDBusConnection m_bus;
    AgentClock& m_clock;
    QString m_busIdentity;
    QStringList m_capabilities;
    QHash<uint, QString> m_tokens;                  // of clicks whose action has not arrived yet
    std::function<void(const Posted&)> m_answered;  // of the post under way; else empty
    int m_posts = 0;                                // counts them, and their answers
    int m_questions = 0;                            // counts them, their answers, and the servers and their ends
    int m_owner = 0;                                // counts the servers and their ends
    bool m_ready = false;
    bool m_preparing = false;
};

}  // namespace kpx
