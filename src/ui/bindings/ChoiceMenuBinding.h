#pragma once

#include "controls/PopUpButton.h"

class QMenu;

namespace kpx {

/// A pop-up as a menu within the menu bar: one item is marked, and choosing another one marks that.
void bind(PopUpButton& control, QMenu& menu);

}  // namespace kpx
