#include "ui/style/AlertIcons.h"

#include "ui/style/Colors.h"

#include <QPainter>
#include <QPixmap>

namespace kpx {

namespace {

void drawMark(QPainter& painter, const QColor& ink, bool upright, double top, double bottom) {
    painter.setPen(QPen(ink, 5, Qt::SolidLine, Qt::RoundCap));
    const double dot = upright ? bottom : top;
    const double from = upright ? top : top + 12;
    const double to = upright ? bottom - 12 : bottom;
    painter.drawLine(QPointF(32, from), QPointF(32, to));
    painter.drawPoint(QPointF(32, dot));
}

/// Drawn on a field of 64 by 64.
void drawSign(QPainter& painter, QStyle::StandardPixmap pixmap, const QPalette& palette) {
    const QColor ink = isDarkPalette(palette) ? palette.color(QPalette::Window) : QColor(0xFFFFFF);
    if (pixmap == QStyle::SP_MessageBoxWarning) {
        const QColor amber = isDarkPalette(palette) ? QColor(0xF2B84B) : QColor(0xB86E00);
        painter.setPen(QPen(amber, 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(amber);
        painter.drawPolygon(QPolygonF{QPointF(32, 11), QPointF(57, 54), QPointF(7, 54)});
        drawMark(painter, ink, true, 24, 49);
        return;
    }
    const bool critical = pixmap == QStyle::SP_MessageBoxCritical;
    painter.setPen(Qt::NoPen);
    painter.setBrush(critical ? warningRed(palette) : palette.color(QPalette::Highlight));
    painter.drawEllipse(QRectF(4, 4, 56, 56));
    drawMark(painter, ink, critical, 19, 45);
}

}  // namespace

QIcon alertIcon(QStyle::StandardPixmap pixmap, const QPalette& palette) {
    if (pixmap != QStyle::SP_MessageBoxWarning && pixmap != QStyle::SP_MessageBoxCritical &&
        pixmap != QStyle::SP_MessageBoxInformation) {
        return {};
    }
    QIcon icon;
    for (const int size : {40, 80, 160}) {
        QPixmap picture(size, size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 64.0, size / 64.0);
        drawSign(painter, pixmap, palette);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

}  // namespace kpx
