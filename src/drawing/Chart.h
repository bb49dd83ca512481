#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kpx {

/// One bar: what it stands for, how much it is, and both in words.
struct ChartBar {
    std::string label;
    double amount = 0;
    std::string amountText;
    /// What stands at the axis; empty for nothing.
    std::string axisLabel;
    bool operator==(const ChartBar&) const = default;
};

/// An amount with its text: a mark of the axis, or a line across the bars.
struct ChartMark {
    double amount = 0;
    std::string text;
    bool operator==(const ChartMark&) const = default;
};

/// A list of bars as plain values, whatever they count.
struct Chart {
    /// Columns stand beside each other, in the order of time; rows below each other, each with its name.
    enum class Shape { Columns, Rows };
    Shape shape = Shape::Columns;
    std::string title;
    /// What the bars stand for and what they count, as the heads of a table of them.
    std::string labelTitle;
    std::string amountTitle;
    std::vector<ChartBar> bars;
    /// Round amounts, ascending, from not above the smallest bar and the average to not below the largest.
    std::vector<ChartMark> axis;
    std::optional<ChartMark> average;
    bool operator==(const Chart&) const = default;
};

/// Round amounts of equal distance (1, 2 or 5 times a power of ten, a hundredth at least) that begin at or
/// below both 0 and `lowest`, and end at or above both 0 and `highest`; between two and eight. What is no
/// number counts as 0, and what is beyond all reason as the largest that is not.
std::vector<double> roundMarks(double lowest, double highest);

}  // namespace kpx
