#pragma once

#include "reminders/ReminderFolder.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace kpx {

/// Hands a clicked reminder to the window program, which is started if it does not run: by the bus where its
/// service file is installed, else from beside the agent's own program.
class HandOver : public QObject {
    Q_OBJECT

public:
    explicit HandOver(const QDBusConnection& bus);

    /// `answered` is called when the program has dealt with it, and when it could not be reached. As long as the
    /// reminder is not withdrawn, it is to be given again when `applicationAppeared` is called.
    void give(const Reminder& reminder, const ReminderContent& content, const QString& token,
              std::function<void()> answered);

    std::function<void()> applicationAppeared;

private:
    QDBusConnection m_bus;
};

}  // namespace kpx
