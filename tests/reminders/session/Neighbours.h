#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <map>
#include <string>
#include <vector>

namespace kpx {

/// A notification server that remembers what came to its screen.
class NotificationDaemonDouble : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Notification {
        uint number = 0;
        QString title;
        QString body;
        QString icon;
        QStringList actions;
        QVariantMap hints;
        int timeout = 0;
    };

    NotificationDaemonDouble(const QDBusConnection& bus, const QStringList& capabilities);
    ~NotificationDaemonDouble() override;

    /// Comes to the bus, leaves it with all it shows.
    void appear();
    void disappear();
    /// From now on it leaves the bus at its so-many-th step: a call received is one, and the effect of a call before
    /// it is answered another. 0 lets it stay.
    void endAtStep(int step) { m_stepsLeft = step; }
    bool hasEnded() const { return m_hasEnded; }

    int timesShown(const QString& body) const;
    uint numberOf(const QString& body) const;
    /// As a user's click and a user's dismissal.
    void click(uint number, const QString& action = QStringLiteral("default"), const QString& token = {});
    void dismiss(uint number);
    /// Sends a signal of its interface with arguments as nobody expects them.
    void sendOdd(const QString& signal, const QVariantList& arguments);

    std::vector<Notification> shown;    ///< everything that newly came to the screen, in order
    std::map<uint, Notification> open;  ///< what is on the screen
    bool isSilent = false;              ///< takes notifications and neither shows nor answers
    int silentlyTaken = 0;
    bool isRefusing = false;  ///< answers every notification with an error
    int refused = 0;

public Q_SLOTS:
    QStringList GetCapabilities();
    uint Notify(const QString& program, uint replaces, const QString& icon, const QString& title, const QString& body,
                const QStringList& actions, const QVariantMap& hints, int timeout);
    void CloseNotification(uint number);

Q_SIGNALS:
    void ActivationToken(uint number, const QString& token);
    void ActionInvoked(uint number, const QString& action);
    void NotificationClosed(uint number, uint reason);

private:
    /// True when this was the last one; what is under way is then never answered.
    bool endsAtThisStep();

    QDBusConnection m_bus;
    QStringList m_capabilities;
    uint m_lastNumber = 0;
    int m_stepsLeft = 0;
    bool m_hasEnded = false;
};

/// The window program as the agent sees it: takes clicked reminders and withdraws them.
class ApplicationDouble : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationDouble(const QDBusConnection& bus) : m_bus(bus) {}
    ~ApplicationDouble() override;
    void appear();

    struct Click {
        QString identifier;
        std::string title;
        std::string text;
        QVariantMap platformData;
    };
    std::vector<Click> clicks;
    std::vector<Click> windows;  ///< reminders that it was asked to show itself
    bool withdraws = true;

public Q_SLOTS:
    void ActivateAction(const QString& action, const QVariantList& parameters, const QVariantMap& platformData);

private:
    QDBusConnection m_bus;
};

}  // namespace kpx
