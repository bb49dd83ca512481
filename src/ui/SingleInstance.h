#pragma once

#include "app/Ports.h"

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
///     instance.activated = …;          // set both before the event loop starts: nothing arrives earlier
///     instance.reminderClicked = …;
class SingleInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// False when another instance runs; it has been raised, and this start has no more to do.
    [[nodiscard]] bool claim();

    /// The window is to come to the front.
    std::function<void()> activated;
    /// Also called when the click started the program. The reminder has its identifier, title and text.
    std::function<void(const UserNotification& notification)> reminderClicked;

public Q_SLOTS:
    // The methods on the bus, as org.freedesktop.Application has them.
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& addresses, const QVariantMap& platformData);
    void ActivateAction(const QString& action, const QVariantList& parameters, const QVariantMap& platformData);
};

}  // namespace kpx
