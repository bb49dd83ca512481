#pragma once

#include <QColor>
#include <QPalette>

namespace kpx {

/// What the desktop asks for.
struct Scheme {
    bool dark = false;
    bool highContrast = false;
    bool operator==(const Scheme&) const = default;
};

QPalette paletteOf(const Scheme& scheme);

/// Whether light text stands on dark ground in it.
bool isDarkPalette(const QPalette& palette);

/// Whether its edges are as strong as its texts.
bool isHighContrastPalette(const QPalette& palette);

/// The red of dates that are due or past; readable on the palette's plain and striped ground.
QColor warningRed(const QPalette& palette);

/// `first` with a share of `second` (0 to 1) mixed in.
QColor mixed(const QColor& first, const QColor& second, double share);

}  // namespace kpx
