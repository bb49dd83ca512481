#pragma once

#include <QColor>
#include <QPalette>

namespace kpx {

QPalette lightPalette();
QPalette darkPalette();

/// Whether light text stands on dark ground in it.
bool isDarkPalette(const QPalette& palette);

/// The red of dates that are due or past; readable on the palette's plain and striped ground.
QColor warningRed(const QPalette& palette);

/// `first` with a share of `second` (0 to 1) mixed in.
QColor mixed(const QColor& first, const QColor& second, double share);

}  // namespace kpx
