#pragma once

#include "app/Ports.h"

#include <QObject>

namespace kpx {

/// The system's clock and the event loop's timers. Calls still pending when it is destroyed are dropped.
class QtClock : public Clock {
public:
    Date now() override;
    void callAfter(double seconds, std::function<void()> call) override;

private:
    QObject m_pending;
};

}  // namespace kpx
