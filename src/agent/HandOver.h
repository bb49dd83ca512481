#pragma once

#include "reminders/ReminderFolder.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace kpx {

/// Hands a reminder to the window program, which is started if it does not run: by the bus where its service file
/// is installed, else from beside the agent's own program.
class HandOver : public QObject {
    Q_OBJECT

public:
    explicit HandOver(const QDBusConnection& bus);

    /// `action` is one of Names.h. `answered` is called when the program has dealt with it, and with false when it
    /// could not be reached; it is to be given again when `applicationAppeared` is called.
    void give(const char* action, const std::string& identifier, const ReminderContent& content, const QString& token,
              std::function<void(bool done)> answered);

    std::function<void()> applicationAppeared;

private:
    QDBusConnection m_bus;
};

}  // namespace kpx
