#pragma once

#include <QColor>
#include <QRectF>

class QPainter;
class QStyleOption;

namespace kpx {

/// The box of a button, field or pop-up: filled, with an edge, and a ring when it has the focus.
void drawBox(QPainter& painter, const QRect& area, const QColor& fill, const QColor& edge, bool focus,
             const QColor& ring);

/// A chevron pointing down (or up), in the middle of the area.
void drawChevron(QPainter& painter, const QRectF& area, const QColor& color, bool up = false);

/// The mark in a check box.
void drawCheckMark(QPainter& painter, const QRectF& box, const QColor& color);

}  // namespace kpx
