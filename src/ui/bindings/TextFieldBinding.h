#pragma once

#include "controls/TextField.h"

class QLabel;
class QLineEdit;

namespace kpx {

/// Only what the user types, pastes or deletes arrives as an edit; a text that the program sets does not.
void bind(TextField& control, QLineEdit& widget);
void bind(Label& control, QLabel& widget);

}  // namespace kpx
