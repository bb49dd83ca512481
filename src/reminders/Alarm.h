#pragma once

#include "core/DataFilesReplacement.h"
#include "reminders/Schedule.h"

#include <QFileSystemWatcher>
#include <QSocketNotifier>

#include <functional>
#include <optional>

namespace kpx {

/// What the wall clock shows, in the time zone the machine is set to at this moment.
LocalTime localTimeNow();

/// Wakes the agent at 08:00 of a day, and whenever the answer to "what time is it?" may have jumped: after a
/// clock step, a resume, a change of the machine's time zone. In between it needs no processor time.
class Alarm {
public:
    explicit Alarm(std::function<void()> wake);
    /// Replaces the earlier setting. Without a day a jump of the clock does not wake either.
    void set(std::optional<Day> day);

private:
    FileDescriptor m_timer;
    QSocketNotifier m_notifier;
    QFileSystemWatcher m_timeZone;
};

}  // namespace kpx
