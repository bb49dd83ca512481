#include "drawing/ChartLayout.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace kpx {

namespace {

constexpr char chartFont[] = "LucidaGrande";
constexpr double gap = 4;
constexpr double widestBar = 48;
constexpr double barShareOfSlot = 0.7;
/// More than the line that it stands on hides.
constexpr double smallestBar = 2;
constexpr double gridWidth = 0.5;
constexpr double averageWidth = 2;
constexpr double averageSample = 20;
/// Of the frame, what names at the left of rows may take at most.
constexpr double largestNameShare = 0.35;
/// Below a text's middle stands its baseline, by this part of its size.
constexpr double baselineBelowMiddle = 0.36;

/// Wide enough for most texts: letters of alphabets, and the square signs of the Far East.
double roughWidth(std::string_view text, double size) {
    double ems = 0;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool continues = (byte & 0xC0U) == 0x80U;
        ems += continues ? 0 : byte >= 0xE3U ? 1.0 : 0.62;
    }
    return ems * size;
}

template <typename Item>
double widest(const std::vector<Item>& items, double size, std::string Item::*text) {
    double width = 0;
    for (const Item& item : items) {
        width = std::max(width, roughWidth(item.*text, size));
    }
    return width;
}

/// The straight way from amounts to places.
struct Scale {
    double lowest, highest, from, length;
    double place(double amount) const {
        const double share = (amount - lowest) / (highest - lowest);
        return from + length * (std::isnan(share) ? 0 : std::clamp(share, 0.0, 1.0));
    }
    /// Where a bar ends. What is not nothing is seen, however small it is beside the others.
    double endOfBar(double amount) const {
        const double zero = place(0);
        if (amount > 0) {
            return std::max(place(amount), zero + smallestBar);
        }
        return amount < 0 ? std::min(place(amount), zero - smallestBar) : zero;
    }
};

class ChartPen {
public:
    ChartPen(const Chart& chart, const ChartFrame& frame) : m_chart(chart), m_frame(frame), m_size(frame.textSize) {}

    LaidOutChart drawn() {
        drawLegend();
        if (m_chart.shape == Chart::Shape::Columns) {
            drawColumns();
        } else {
            drawRows();
        }
        if (m_frame.mirrored) {
            mirror();
        }
        return std::move(m_result);
    }

private:
    void text(std::string content, double x, double y, double room, Alignment alignment, Ink ink) {
        m_result.operations.emplace_back(
            DrawText{std::move(content), chartFont, m_size, false, x, y, room, alignment, ink});
    }
    void line(double x1, double y1, double x2, double y2, double width, Ink ink) {
        m_result.operations.emplace_back(DrawLine{x1, y1, x2, y2, width, ink});
    }
    double lineHeight() const { return m_size * 1.5; }
    std::vector<Box>& slots() { return m_result.slots; }

    /// What the line across the bars means, above them at the right: upon the bars nobody could read it. The sample
    /// follows the text, whose own width only the painter knows.
    void drawLegend() {
        if (!m_chart.average) {
            return;
        }
        const Box& box = m_frame.box;
        const double middle = box.top() - lineHeight() / 2;
        const double sample = box.right() - averageSample;
        const double end = sample - 1.5 * gap;
        text(m_chart.average->text, end, middle - baselineBelowMiddle * m_size, std::max(end - box.left, 1.0),
             Alignment::Right, Ink::Text);
        line(sample, middle, box.right(), middle, averageWidth, Ink::Average);
    }

    Scale scale(double from, double length) const {
        const std::vector<ChartMark>& axis = m_chart.axis;
        return {axis.front().amount, axis.back().amount, from, length};
    }

    void drawColumns() {
        const Box& box = m_frame.box;
        const double amounts = widest(m_chart.axis, m_size, &ChartMark::text);
        const double left = box.left + std::min(amounts, box.width * largestNameShare) + gap;
        const double bottom = box.bottom + 1.5 * lineHeight();
        const double slot = (box.right() - left) / static_cast<double>(m_chart.bars.size());
        const Scale heights = scale(bottom, box.top() - lineHeight() - bottom);
        for (const ChartMark& mark : m_chart.axis) {
            const double y = heights.place(mark.amount);
            line(left, y, box.right(), y, gridWidth, Ink::Grid);
            text(mark.text, left - gap, y - baselineBelowMiddle * m_size, left - gap - box.left, Alignment::Right,
                 Ink::QuietText);
        }
        const double zero = heights.place(0);
        for (std::size_t index = 0; index < m_chart.bars.size(); ++index) {
            const double slotLeft = left + slot * static_cast<double>(index);
            const double middle = slotLeft + slot / 2;
            slots().push_back({slotLeft, bottom, slot, box.top() - lineHeight() - bottom});
            drawBar(middle, zero, middle, heights.endOfBar(m_chart.bars[index].amount), slot);
        }
        line(left, zero, box.right(), zero, 1, Ink::QuietText);
        if (m_chart.average) {
            const double y = heights.place(m_chart.average->amount);
            line(left, y, box.right(), y, averageWidth, Ink::Average);
        }
        drawColumnLabels(box.bottom + lineHeight() / 2 - baselineBelowMiddle * m_size);
    }

    void drawBar(double x1, double y1, double x2, double y2, double slot) {
        if (x1 != x2 || y1 != y2) {
            line(x1, y1, x2, y2, std::min(slot * barShareOfSlot, widestBar), Ink::Bar);
        }
    }

    void drawColumnLabels(double y) {
        const Box& box = m_frame.box;
        const double width = std::min(widest(m_chart.bars, m_size, &ChartBar::axisLabel), box.width);
        double free = box.left;
        for (std::size_t index = 0; index < m_chart.bars.size(); ++index) {
            const std::string& label = m_chart.bars[index].axisLabel;
            const double middle = slots()[index].left + slots()[index].width / 2;
            const double x = std::clamp(middle, box.left + width / 2, box.right() - width / 2);
            // A label that had to be moved from its bar would speak of another.
            if (label.empty() || x - width / 2 < free || std::abs(x - middle) > slots()[index].width / 2 + width / 4) {
                continue;
            }
            text(label, x, y, width, Alignment::Center, Ink::Text);
            free = x + width / 2 + 2 * gap;
        }
    }

    void drawRows() {
        const Box& box = m_frame.box;
        const double names = std::min(widest(m_chart.bars, m_size, &ChartBar::axisLabel), box.width * largestNameShare);
        const double amounts =
            std::min(widest(m_chart.bars, m_size, &ChartBar::amountText), box.width * largestNameShare);
        const double left = box.left + names + gap;
        const double right = box.right() - amounts - gap;
        const auto count = static_cast<double>(m_chart.bars.size());
        const double slot = std::min((box.height - lineHeight()) / count, 3 * lineHeight());
        // The amounts stand below the last row, however few there are.
        const double bottom = box.top() - slot * count;
        const Scale widths = scale(left, right - left);
        drawRowMarks(widths, bottom);
        for (std::size_t index = 0; index < m_chart.bars.size(); ++index) {
            const ChartBar& bar = m_chart.bars[index];
            const double slotBottom = box.top() - slot * static_cast<double>(index + 1);
            const double middle = slotBottom + slot / 2;
            const double baseline = middle - baselineBelowMiddle * m_size;
            slots().push_back({box.left, slotBottom, box.width, slot});
            drawBar(widths.place(0), middle, widths.endOfBar(bar.amount), middle, slot);
            text(bar.axisLabel, left - gap, baseline, names, Alignment::Right, Ink::Text);
            text(bar.amountText, box.right(), baseline, amounts, Alignment::Right, Ink::Text);
        }
        const double zero = widths.place(0);
        line(zero, bottom, zero, box.top(), 1, Ink::QuietText);
    }

    void drawRowMarks(const Scale& widths, double bottom) {
        const double width = std::min(widest(m_chart.axis, m_size, &ChartMark::text), m_frame.box.width / 2);
        double free = m_frame.box.left;
        for (const ChartMark& mark : m_chart.axis) {
            const double x = widths.place(mark.amount);
            line(x, bottom, x, m_frame.box.top(), gridWidth, Ink::Grid);
            if (x - width / 2 < free) {
                continue;
            }
            text(mark.text, x, bottom - lineHeight() / 2 - baselineBelowMiddle * m_size, width, Alignment::Center,
                 Ink::QuietText);
            free = x + width / 2 + 2 * gap;
        }
    }

    double mirrored(double x) const { return m_frame.box.left + m_frame.box.right() - x; }

    void mirror() {
        for (DrawingOperation& operation : m_result.operations) {
            if (auto* drawnText = std::get_if<DrawText>(&operation)) {
                drawnText->x = mirrored(drawnText->x);
                if (drawnText->alignment != Alignment::Center) {
                    drawnText->alignment = drawnText->alignment == Alignment::Left ? Alignment::Right : Alignment::Left;
                }
            } else if (auto* drawnLine = std::get_if<DrawLine>(&operation)) {
                drawnLine->x1 = mirrored(drawnLine->x1);
                drawnLine->x2 = mirrored(drawnLine->x2);
            }
        }
        for (Box& slot : slots()) {
            slot.left = mirrored(slot.right());
        }
    }

    const Chart& m_chart;
    const ChartFrame& m_frame;
    double m_size;
    LaidOutChart m_result;
};

}  // namespace

LaidOutChart layOutChart(const Chart& chart, const ChartFrame& frame) {
    return chart.bars.empty() || chart.axis.size() < 2 ? LaidOutChart() : ChartPen(chart, frame).drawn();
}

}  // namespace kpx
