#pragma once

#include "controls/Matrix.h"

class QWidget;

namespace kpx {

/// The cells are the buttons inside the container, each named "<matrix>_<tag>".
void bind(Matrix& control, QWidget& container);

/// The tags without a button and the buttons without a tag, as sentences.
std::vector<std::string> mismatches(const Matrix& control, const QWidget& container);

}  // namespace kpx
