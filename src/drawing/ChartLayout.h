#pragma once

#include "drawing/Chart.h"
#include "drawing/Document.h"

#include <vector>

namespace kpx {

/// An upright rectangle in points, y growing upward.
struct Box {
    double left = 0, bottom = 0, width = 0, height = 0;
    double right() const { return left + width; }
    double top() const { return bottom + height; }
    bool contains(double x, double y) const { return x >= left && x < right() && y >= bottom && y < top(); }
};

/// Where a chart is to stand, and how large its texts are, in points.
struct ChartFrame {
    Box box;
    double textSize = 8;
    /// Months run, and bars grow, from the right.
    bool mirrored = false;
};

struct LaidOutChart {
    std::vector<DrawingOperation> operations;
    /// Of each bar the part of the picture that speaks of it: its slot across the whole plot.
    std::vector<Box> slots;
};

/// The chart in its frame; nothing for a chart without bars.
///
/// The widths of texts are rough, by the character: every text has its room, in which the painter fits it.
/// Labels at the axis are thinned until they stand apart.
LaidOutChart layOutChart(const Chart& chart, const ChartFrame& frame);

}  // namespace kpx
