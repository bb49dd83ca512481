#pragma once

#include "controls/Control.h"

#include <utility>
#include <vector>

namespace kpx {

/// A short way of several steps, shown while it is open.
class Steps : public Control {
public:
    Steps(ControlRegistry& registry, std::string_view name, Place place, std::size_t count)
        : Control(registry, name, place), m_done(count) {}

    bool isOpen() const { return m_open; }
    /// Which of them are done, in their order.
    const std::vector<bool>& done() const { return m_done; }

    void setOpen(bool open) {
        m_open = open;
        notify();
    }
    void setDone(std::vector<bool> done) {
        m_done = std::move(done);
        notify();
    }

private:
    bool m_open = false;
    std::vector<bool> m_done;
};

}  // namespace kpx
