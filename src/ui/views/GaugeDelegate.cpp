#include "ui/views/GaugeDelegate.h"

#include "ui/style/Colors.h"

#include <QPainter>
#include <QStyle>

namespace kpx {

void GaugeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    const QVariant gauge = index.data(gaugeRole);
    if (!gauge.isValid()) {
        return;
    }
    constexpr int thickness = 3;
    // As wide as the text above it may be.
    const int inset = option.widget->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
    const QRect track(option.rect.left() + inset, option.rect.bottom() - thickness - 1, option.rect.width() - 2 * inset,
                      thickness);
    const double left = gauge.toDouble();
    // On the row's own ground the colours of text, as they are readable there whatever the row's state.
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const QColor ground = option.palette.color(selected ? QPalette::Highlight : QPalette::Base);
    const QColor ink = option.palette.color(selected ? QPalette::HighlightedText : QPalette::Highlight);
    if (left <= 0) {
        painter->fillRect(track, selected ? ink : warningRed(option.palette));
        return;
    }
    painter->fillRect(track, mixed(ground, ink, 0.25));
    QRect filled = track;
    filled.setWidth(qMax(1, qRound(track.width() * left)));
    if (option.direction == Qt::RightToLeft) {
        filled.moveRight(track.right());
    }
    painter->fillRect(filled, ink);
}

}  // namespace kpx
