#include "controls/Control.h"

#include <algorithm>

namespace kpx {

Control* ControlRegistry::find(std::string_view name) const {
    const auto control = std::ranges::find(m_controls, name, &Control::name);
    return control == m_controls.end() ? nullptr : *control;
}

Control::Control(ControlRegistry& registry, std::string_view name, Place place) : m_name(name), m_place(place) {
    registry.m_controls.push_back(this);
}

void Control::setEnabled(bool enabled) {
    if (m_enabled != enabled) {
        m_enabled = enabled;
        notify();
    }
}

void Control::notify() const {
    if (changed) {
        changed();
    }
}

}  // namespace kpx
