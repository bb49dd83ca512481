#include "ui/views/EmptyState.h"

#include "ui/style/Headings.h"

#include <QFontMetrics>
#include <QPainter>

namespace kpx {

void drawEmptyState(QPainter& painter, const QRect& area, const QPalette& palette, const QFont& font,
                    const QString& title, const QString& text) {
    constexpr int widest = 460;
    constexpr int gap = 8;
    QFont titleFont = headingFont(font);
    titleFont.setPointSizeF(font.pointSizeF() * 1.25);
    const int width = qMin(widest, area.width() - 32);
    const QRect unbounded(0, 0, width, 1000);
    const int titleHeight = QFontMetrics(titleFont).boundingRect(unbounded, Qt::TextWordWrap, title).height();
    const int textHeight = QFontMetrics(font).boundingRect(unbounded, Qt::TextWordWrap, text).height();
    // A little above the middle, where the eye rests.
    const int top = area.top() + qMax(8, (area.height() - titleHeight - gap - textHeight) * 2 / 5);
    const int left = area.center().x() - width / 2;

    painter.setFont(titleFont);
    painter.setPen(palette.color(headingColor()));
    painter.drawText(QRect(left, top, width, titleHeight), Qt::AlignHCenter | Qt::TextWordWrap, title);
    painter.setFont(font);
    painter.setPen(palette.color(QPalette::PlaceholderText));
    painter.drawText(QRect(left, top + titleHeight + gap, width, textHeight), Qt::AlignHCenter | Qt::TextWordWrap,
                     text);
}

}  // namespace kpx
