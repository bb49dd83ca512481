#include "ui/views/ReceiptView.h"

#include "ui/views/EmptyState.h"
#include "ui/views/ReceiptImage.h"

#include <QPainter>

namespace kpx {

ReceiptView::ReceiptView(QWidget* parent) : QWidget(parent) { setAcceptDrops(true); }

void ReceiptView::showImage(const QString& file) {
    m_image = receiptThumbnail(file, size() * devicePixelRatioF());
    update();
}

void ReceiptView::clear() {
    m_image = QImage();
    update();
}

void ReceiptView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (m_image.isNull()) {
        drawEmptyState(painter, rect(), palette(), font(), tr("No receipt"),
                       tr("Drop a picture or a PDF from the data folder here."));
        return;
    }
    const QSize natural = m_image.size() / devicePixelRatioF();
    QRect target(QPoint(), natural.width() > width() || natural.height() > height()
                               ? natural.scaled(size(), Qt::KeepAspectRatio)
                               : natural);
    target.moveCenter(rect().center());
    painter.drawImage(target, m_image);
}

}  // namespace kpx
