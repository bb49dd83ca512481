#pragma once

#include "controls/Control.h"
#include "ui/views/Reachable.h"

#include <concepts>
#include <utility>

namespace kpx {

/// The act where a user can get to the widget. Elsewhere, behind a sheet, assistive technology has set the widget where
/// no click or key leads: it is set back to what the control holds.
template <class Act>
auto byUser(Control& control, const QWidget& widget, Act act) {
    return [&control, &widget, act = std::move(act) ]<class... Values>(const Values&... values)
        requires std::invocable<const Act&, const Values&...>
    {
        if (isReachable(widget)) {
            act(values...);
        } else if (control.changed) {
            control.changed();
        }
    };
}

}  // namespace kpx
