#pragma once

#include <string>
#include <variant>
#include <vector>

namespace kpx {

/// One line of text. Tabs in it advance to the next tab stop, every 28 points from its start.
struct DrawText {
    std::string text;
    std::string font;  ///< "LucidaGrande" or "LucidaGrande-Bold"; the painter substitutes
    double size = 0;   ///< points
    bool underline = false;
    double x = 0;  ///< left end of the baseline
    double y = 0;
    bool operator==(const DrawText&) const = default;
};

/// A straight line.
struct DrawLine {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    double width = 0;
    bool operator==(const DrawLine&) const = default;
};

using DrawingOperation = std::variant<DrawText, DrawLine>;

struct Page {
    std::vector<DrawingOperation> operations;
};

/// A printed report, ready for any painter. Coordinates are points, the origin the lower left corner of
/// a landscape page, y growing upward; all ink is opaque black.
struct Document {
    int type = 0;
    std::string title;
    std::vector<Page> pages;
};

/// Ascent and descent of a font at its size, in points, unrounded.
struct FontMetrics {
    double ascent = 0;
    double descent = 0;
};

}  // namespace kpx
