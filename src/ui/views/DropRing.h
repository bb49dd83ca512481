#pragma once

#include <QPainter>
#include <QPalette>
#include <QWidget>

namespace kpx {

/// The ring inside the edge of a drop target; thicker while a drag hovers that it would take.
inline void drawDropRing(QPainter& painter, const QWidget& target, bool dragInside) {
    constexpr double inset = 4;
    const QRectF bounds(0, 0, target.width(), target.height() - 1);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(dragInside ? QPen(target.palette().color(QPalette::Highlight), 3)
                              : QPen(target.palette().color(QPalette::Mid), 1));
    painter.drawRoundedRect(bounds.adjusted(inset, inset, -inset, -inset), 4, 4);
}

}  // namespace kpx
