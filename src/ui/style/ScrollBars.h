#pragma once

#include <QStyle>

class QPainter;
class QStyleOptionSlider;

namespace kpx {

/// A scroll bar without arrows: a rounded slider on the ground of the list.
QRect scrollBarSlider(const QStyleOptionSlider& bar);
QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part);
void drawScrollBar(const QStyleOptionSlider& bar, const QRect& slider, QPainter& painter);

}  // namespace kpx
