#include "ui/views/ReceiptView.h"

#include "ui/Conversions.h"
#include "ui/views/DropRing.h"
#include "ui/views/EmptyState.h"
#include "ui/views/ReceiptLoader.h"
#include "ui/views/ReceiptPages.h"
#include "ui/views/ReceiptWatch.h"

#include <QFileInfo>
#include <QPainter>
#include <QStyle>

#include <utility>

namespace kpx {

namespace {

/// Between the view's edge and what it shows: the ring's place.
constexpr int margin = 8;
/// More come when they are scrolled to.
constexpr int firstPages = 4;

}  // namespace

ReceiptView::ReceiptView(QWidget* parent)
    : QWidget(parent), m_loader(new ReceiptLoader(this)), m_watch(new ReceiptWatch(this)) {
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    connect(m_loader, &ReceiptLoader::outlineCame, this, &ReceiptView::buildPages);
    connect(m_loader, &ReceiptLoader::pageCame, this, &ReceiptView::pageCame);
    connect(m_loader, &ReceiptLoader::finished, this, &ReceiptView::finished);
    connect(m_watch, &ReceiptWatch::changed, this, [this] { showReceipt(std::string(m_file)); });
    clear();
}

ReceiptView::~ReceiptView() = default;

void ReceiptView::showReceipt(const std::string& file) {
    takeDown();
    m_file = file;
    m_watch->watch(m_file);
    setAccessibleName(m_file.empty() ? tr("No receipt") : tr("Receipt: %1").arg(QFileInfo(qstring(m_file)).fileName()));
    if (isVisible()) {
        build();
    }
    update();
}

void ReceiptView::setMessage(const QString& message) {
    m_message = message;
    setAccessibleDescription(message);
    update();
}

void ReceiptView::setDragInside(bool inside) {
    m_dragInside = inside;
    update();
}

void ReceiptView::takeDown() {
    m_loader->cancel();
    m_image = QImage();
    m_result = DecodingResult::Shown;
    delete std::exchange(m_pages, nullptr);
    m_built = false;
}

void ReceiptView::build() {
    if (!m_built && !m_file.empty()) {
        m_built = true;
        load(0, firstPages);
    }
}

void ReceiptView::load(int firstPage, int pageCount) {
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    // A page leaves room for the bar beside it; a picture has none and could be that much wider.
    const QSize room = (size() - QSize(2 * margin + scrollBar, 2 * margin)) * devicePixelRatioF();
    m_loader->load({.file = m_file,
                    .purpose = DecodingRequest::Purpose::Display,
                    .room = {room.width(), room.height()},
                    .firstPage = firstPage,
                    .pageCount = pageCount});
}

void ReceiptView::buildPages(const DocumentOutline& outline) {
    if (!outline.isDocument || m_pages) {
        return;
    }
    m_pages = new ReceiptPages(outline, firstPages, this);
    m_pages->setAccessibleName(accessibleName());
    m_pages->setGeometry(rect().adjusted(margin, margin, -margin, -margin));
    connect(m_pages, &ReceiptPages::wanted, this, &ReceiptView::load);
    m_pages->show();
    m_pages->setFocus();
}

void ReceiptView::pageCame(int index, const QImage& picture) {
    if (m_pages) {
        m_pages->setPicture(index, picture);
        return;
    }
    m_image = picture;
    m_image.setDevicePixelRatio(devicePixelRatioF());
    update();
}

void ReceiptView::finished(DecodingResult result) {
    if (m_pages) {
        m_pages->answered();
        return;
    }
    m_result = result;
    update();
}

void ReceiptView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    build();
}

void ReceiptView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (m_pages) {
        m_pages->setGeometry(rect().adjusted(margin, margin, -margin, -margin));
    }
}

void ReceiptView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawDropRing(painter, *this, m_dragInside);
    if (!m_message.isEmpty() || m_result != DecodingResult::Shown) {
        drawEmptyState(painter, rect(), palette(), font(), tr("No picture of the receipt"),
                       m_message.isEmpty() ? tr("The file cannot be shown.") : m_message);
    } else if (m_file.empty()) {
        drawEmptyState(painter, rect(), palette(), font(), tr("No receipt"),
                       tr("Drop a picture or a PDF from the data folder here."));
    } else if (!m_image.isNull()) {
        const QSizeF room = QSizeF(size() - QSize(2 * margin, 2 * margin));
        QSizeF natural = m_image.deviceIndependentSize();
        if (natural.width() > room.width() || natural.height() > room.height()) {
            natural.scale(room, Qt::KeepAspectRatio);
        }
        QRectF target(QPointF(), natural);
        target.moveCenter(QRectF(rect()).center());
        painter.drawImage(target, m_image);
    }
}

}  // namespace kpx
