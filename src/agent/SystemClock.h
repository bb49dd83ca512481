#pragma once

#include "agent/AgentClock.h"
#include "files/FileDescriptor.h"

#include <QFileSystemWatcher>
#include <QSocketNotifier>

namespace kpx {

/// The machine's clock. In between it needs no processor time.
class SystemClock : public AgentClock {
public:
    SystemClock();

    LocalTime localTime() override;
    std::chrono::seconds elapsed() override;
    void wakeAt(std::optional<LocalDay> day) override;
    void callAfter(std::chrono::milliseconds pause, std::function<void()> call) override;

private:
    FileDescriptor m_timer;
    QSocketNotifier m_notifier;
    QFileSystemWatcher m_timeZone;
    QObject m_pending;
};

}  // namespace kpx
