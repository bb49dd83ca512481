#pragma once

#include "app/Ports.h"

namespace kpx {

/// The system's clock and the event loop's timers.
class QtClock : public Clock {
public:
    Date now() override;
    void callAfter(double seconds, std::function<void()> call) override;
};

}  // namespace kpx
