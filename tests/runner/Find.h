#pragma once

#include "tests/runner/Session.h"

#include <string>

namespace kpx::runner {

/// The control of that name and kind that an act is meant for, or why the user cannot act on it.
template <typename Kind>
struct Target {
    Kind* control = nullptr;
    /// Set exactly when the control is null.
    std::string error;

    explicit operator bool() const { return control != nullptr; }
    Kind* operator->() const { return control; }
    Kind& operator*() const { return *control; }
};

/// Wherever it lies, reachable or not.
template <typename Kind>
Target<Kind> find(Session& session, const std::string& name, const char* kindName) {
    Control* control = session.outlets().find(name);
    if (!control) {
        return {nullptr, "no control is called " + name};
    }
    auto* wanted = dynamic_cast<Kind*>(control);
    return wanted ? Target<Kind>{wanted, {}} : Target<Kind>{nullptr, name + " is no " + kindName};
}

/// The same, when the user can act on it now.
template <typename Kind>
Target<Kind> reach(Session& session, const std::string& name, const char* kindName) {
    Target<Kind> target = find<Kind>(session, name, kindName);
    if (target) {
        if (const auto obstacle = session.obstacle(*target)) {
            return {nullptr, *obstacle};
        }
    }
    return target;
}

}  // namespace kpx::runner
