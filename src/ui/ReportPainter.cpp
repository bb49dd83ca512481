#include "ui/ReportPainter.h"

#include <QPainter>

#include <algorithm>

namespace kpx {

namespace {

constexpr double drawnRight = pageRightEdge;
constexpr double drawnTop = 580;
constexpr double margin = 20;

}  // namespace

FontMetrics ReportPainter::metrics(double size) {
    constexpr double unitsPerEm = 2048;
    return {1901 / unitsPerEm * size, 483 / unitsPerEm * size};
}

ReportPainter::ReportPainter(QSizeF pageSize) : ReportPainter(sheetFor(pageSize)) {}

ReportPainter::Sheet ReportPainter::sheetFor(QSizeF pageSize) {
    const bool upright = pageSize.height() > pageSize.width();
    const QSizeF across = upright ? pageSize.transposed() : pageSize;
    QTransform placement;
    if (upright) {
        placement.translate(0, pageSize.height() * unitsPerPoint).rotate(-90);
    }
    if (across.width() >= drawnRight && across.height() >= drawnTop) {
        return {across.height(), placement};
    }
    const QSizeF whole(drawnRight + margin, drawnTop + margin);
    const double scale = std::min(across.width() / whole.width(), across.height() / whole.height());
    const QSizeF spare = across - whole * scale;
    placement.translate(spare.width() / 2 * unitsPerPoint, spare.height() / 2 * unitsPerPoint).scale(scale, scale);
    return {whole.height(), placement};
}

QRectF ReportPainter::placed(const QRectF& place) const {
    const auto scaled = [](const QRectF& rectangle, double factor) {
        return QRectF(rectangle.topLeft() * factor, rectangle.size() * factor);
    };
    return scaled(m_placement.mapRect(scaled(place, unitsPerPoint)), 1 / unitsPerPoint);
}

void ReportPainter::paint(QPainter& painter, const Page& page) {
    if (m_placement.isIdentity()) {
        m_painter.paint(painter, page.operations);
        return;
    }
    painter.save();
    painter.setTransform(m_placement, true);
    m_painter.paint(painter, page.operations);
    painter.restore();
}

}  // namespace kpx
