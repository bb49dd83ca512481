#pragma once

#include "ui/DrawingPainter.h"

#include <QPalette>

namespace kpx {

/// The inks on the palette's ground. Bars and average differ in lightness as well as in hue.
Inks chartInks(const QPalette& palette);

/// The ground behind the bar that is said.
QColor highlightedSlot(const QPalette& palette);

}  // namespace kpx
