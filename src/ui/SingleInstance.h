#pragma once

#include "app/Ports.h"

#include <QDBusContext>
#include <QObject>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <string>

namespace kpx {

/// The program on the session bus: there is one for a session, other programs raise it, and the reminder agent
/// hands it clicked reminders, starting it if need be. Without a session bus it is alone in any case.
///
///     SingleInstance instance;
///     if (!instance.claim()) {
///         return EXIT_SUCCESS;
///     }
///     instance.activated = …;          // set them before the event loop starts: nothing arrives earlier
///     instance.reminderClicked = …;
class SingleInstance : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    ~SingleInstance() override;

    /// False when another instance runs; it has been raised, and asked for the schedule if this start was, and this
    /// start has no more to do. One that does not answer within two seconds is as good as none.
    [[nodiscard]] bool claim(bool scheduleIsWanted = false);
    /// From here on another start does not find this one, whatever of it still runs.
    void release();

    /// The window is to come to the front.
    std::function<void()> activated;
    /// Also called when the click started the program. The reminder has its identifier, title and text.
    std::function<void(const UserNotification& notification)> reminderClicked;
    /// The refill schedule is to be shown.
    std::function<void()> scheduleWanted;
    /// The desktop shows no notifications: the reminder is to be shown in a window, which stands on return.
    std::function<void(const UserNotification& notification)> reminderToBeShown;

public Q_SLOTS:
    // The methods on the bus, as org.freedesktop.Application has them. What they cannot make sense of they answer
    // with an error, and nothing happens.
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& addresses, const QVariantMap& platformData);
    void ActivateAction(const QString& action, const QVariantList& parameters, const QVariantMap& platformData);
};

}  // namespace kpx
