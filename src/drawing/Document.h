#pragma once

#include <string>
#include <variant>
#include <vector>

namespace kpx {

/// What a mark is for. Paper and each appearance of the screen have their colour for it; they differ in
/// lightness too, and none of them says anything that a text does not.
enum class Ink { Text, QuietText, Grid, Bar, Average };

/// Which end of its baseline a text's x is.
enum class Alignment { Left, Center, Right };

/// One line of text. Tabs in it advance to the next tab stop, every 28 points from its start.
struct DrawText {
    std::string text;
    std::string font;  ///< "LucidaGrande" or "LucidaGrande-Bold"; the painter substitutes
    double size = 0;   ///< points
    bool underline = false;
    double x = 0;  ///< on the baseline
    double y = 0;
    /// The points that it may take. A wider text is set narrower, and ends in an ellipsis when that is not
    /// enough; 0 for as wide as it comes.
    double room = 0;
    Alignment alignment = Alignment::Left;
    Ink ink = Ink::Text;
    /// How far from its start what follows the last tab begins at least, so that it stands in one line down the page;
    /// 0 for the next tab stop, wherever that is.
    double lastPart = 0;
    bool operator==(const DrawText&) const = default;
};

/// A straight line with flat ends; a wide one is a bar.
struct DrawLine {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    double width = 0;
    Ink ink = Ink::Text;
    bool operator==(const DrawLine&) const = default;
};

using DrawingOperation = std::variant<DrawText, DrawLine>;

struct Page {
    std::vector<DrawingOperation> operations;
};

/// A printed report or chart, ready for any painter. Coordinates are points, the origin the lower left
/// corner of a landscape page, y growing upward. What is drawn lies between x 20 and 788, y 20 and 580.
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

/// The right end of what is drawn on a page.
inline constexpr double pageRightEdge = 788;

}  // namespace kpx
