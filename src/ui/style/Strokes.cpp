#include "ui/style/Strokes.h"

#include <QPainter>

namespace kpx {

namespace {

constexpr double radius = 5;

}  // namespace

void drawBox(QPainter& painter, const QRect& area, const QColor& fill, const QColor& edge, bool focus,
             const QColor& ring) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double half = focus ? 1.0 : 0.5;
    painter.setPen(QPen(focus ? ring : edge, 2 * half));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(area).adjusted(half, half, -half, -half), radius, radius);
    painter.restore();
}

void drawChevron(QPainter& painter, const QRectF& area, const QColor& color, bool up) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const QPointF middle = area.center();
    const double rise = up ? -2 : 2;
    painter.drawPolyline(QPolygonF{middle + QPointF(-4, -rise), middle + QPointF(0, rise), middle + QPointF(4, -rise)});
    painter.restore();
}

void drawCheckMark(QPainter& painter, const QRectF& box, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const auto at = [&box](double x, double y) {
        return QPointF(box.left() + box.width() * x, box.top() + box.height() * y);
    };
    painter.drawPolyline(QPolygonF{at(0.25, 0.53), at(0.43, 0.70), at(0.76, 0.32)});
    painter.restore();
}

}  // namespace kpx
