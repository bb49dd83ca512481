#pragma once

#include "controls/PopUpButton.h"

class QComboBox;

namespace kpx {

/// Shows the pop-up in the combo box, separators included, so that both count their items alike.
void bind(PopUpButton& control, QComboBox& widget);

}  // namespace kpx
