#include "ui/charts/ChartColors.h"

#include "ui/style/Colors.h"

namespace kpx {

Inks chartInks(const QPalette& palette) {
    const bool dark = isDarkPalette(palette);
    return {.text = palette.color(QPalette::Text),
            .quietText = palette.color(QPalette::PlaceholderText),
            .grid = palette.color(QPalette::Midlight),
            .bar = dark ? QColor(0x2F8F86) : QColor(0x5FB0A8),
            .average = dark ? QColor(0xFFD28A) : QColor(0x7A3300)};
}

QColor highlightedSlot(const QPalette& palette) {
    return mixed(palette.color(QPalette::Base), palette.color(QPalette::Highlight), 0.14);
}

}  // namespace kpx
