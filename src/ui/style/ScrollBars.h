#pragma once

#include <QStyle>

class QPainter;
class QStyleOptionSlider;

namespace kpx {

/// A scroll bar without arrows: a rounded slider on the ground of the list. What lies across begins at the right where
/// the window is read from there.
QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part);
void drawScrollBar(const QStyleOptionSlider& bar, const QRect& slider, QPainter& painter);

}  // namespace kpx
