#include "ui/style/ScrollBars.h"

#include "ui/style/Colors.h"

#include <QPainter>
#include <QStyleOptionSlider>

namespace kpx {

namespace {

constexpr int shortestSlider = 32;

/// As in a window read from the left.
QRect unmirroredSlider(const QStyleOptionSlider& bar) {
    const bool horizontal = bar.orientation == Qt::Horizontal;
    const int length = horizontal ? bar.rect.width() : bar.rect.height();
    const qint64 range = qint64{bar.maximum} - bar.minimum;
    int slider = length;
    if (range > 0) {
        slider = static_cast<int>(qint64{bar.pageStep} * length / (range + bar.pageStep));
        slider = qBound(qMin(shortestSlider, length), slider, length);
    }
    const int start =
        QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition, length - slider, bar.upsideDown);
    return horizontal ? QRect(bar.rect.left() + start, bar.rect.top(), slider, bar.rect.height())
                      : QRect(bar.rect.left(), bar.rect.top() + start, bar.rect.width(), slider);
}

QRect unmirroredPart(const QStyleOptionSlider& bar, QStyle::SubControl part) {
    const QRect slider = unmirroredSlider(bar);
    const bool horizontal = bar.orientation == Qt::Horizontal;
    QRect rest = bar.rect;
    switch (part) {
        case QStyle::SC_ScrollBarSlider:
            return slider;
        case QStyle::SC_ScrollBarGroove:
            return bar.rect;
        case QStyle::SC_ScrollBarSubPage:
            horizontal ? rest.setRight(slider.left() - 1) : rest.setBottom(slider.top() - 1);
            return rest;
        case QStyle::SC_ScrollBarAddPage:
            horizontal ? rest.setLeft(slider.right() + 1) : rest.setTop(slider.bottom() + 1);
            return rest;
        default:
            return {};
    }
}

}  // namespace

QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part) {
    return QStyle::visualRect(bar.direction, bar.rect, unmirroredPart(bar, part));
}

void drawScrollBar(const QStyleOptionSlider& bar, const QRect& slider, QPainter& painter) {
    painter.save();
    painter.fillRect(bar.rect, bar.palette.color(QPalette::Base));
    if (bar.maximum > bar.minimum) {
        const bool lit = (bar.state & QStyle::State_MouseOver) || (bar.state & QStyle::State_Sunken);
        const QColor quiet = bar.palette.color(QPalette::Mid);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(lit ? mixed(quiet, bar.palette.color(QPalette::Text), 0.3) : quiet);
        painter.drawRoundedRect(QRectF(slider).adjusted(4, 4, -4, -4), 3, 3);
    }
    painter.restore();
}

}  // namespace kpx
