#pragma once

#include <QString>

namespace kpx {

/// The text with places, which are not seen, where a name without blanks may break. Lines break between words
/// only, and the rest of such a name would lie outside its window, or make that wider than the screen.
QString withBreaks(const QString& text);

}  // namespace kpx
