#include "ui/views/ReceiptView.h"

#include "ui/views/DropRing.h"
#include "ui/views/EmptyState.h"
#include "ui/views/ReceiptLoader.h"

#include <QFileInfo>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfView>

namespace kpx {

namespace {

/// Between the view's edge and what it shows: the ring's place.
constexpr int margin = 8;

}  // namespace

ReceiptView::ReceiptView(QWidget* parent) : QWidget(parent), m_loader(new ReceiptLoader(this)) {
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    connect(m_loader, &ReceiptLoader::loaded, this, [this](const QImage& picture) {
        m_image = picture;
        m_image.setDevicePixelRatio(devicePixelRatioF());
        update();
    });
    clear();
}

ReceiptView::~ReceiptView() = default;

void ReceiptView::showImage(const QString& file) { display(Kind::Image, file); }

void ReceiptView::showPdf(const QString& file) { display(Kind::Pdf, file); }

void ReceiptView::clear() { display(Kind::None, {}); }

void ReceiptView::setDragInside(bool inside) {
    m_dragInside = inside;
    update();
}

void ReceiptView::display(Kind kind, const QString& file) {
    m_loader->cancel();
    m_image = QImage();
    // The pages before their document: they still look at it while they go.
    delete m_pages;
    m_pages = nullptr;
    delete m_document;
    m_document = nullptr;
    m_kind = kind;
    m_file = file;
    m_built = false;
    setAccessibleName(kind == Kind::None ? tr("No receipt") : tr("Receipt: %1").arg(QFileInfo(file).fileName()));
    if (isVisible()) {
        build();
    }
    update();
}

void ReceiptView::build() {
    if (m_built) {
        return;
    }
    m_built = true;
    if (m_kind == Kind::Image) {
        m_loader->load(m_file, (size() - QSize(2 * margin, 2 * margin)) * devicePixelRatioF());
    } else if (m_kind == Kind::Pdf) {
        buildPages();
    }
}

void ReceiptView::buildPages() {
    m_document = new QPdfDocument(this);
    if (m_document->load(m_file) != QPdfDocument::Error::None || m_document->pageCount() < 1) {
        delete m_document;
        m_document = nullptr;
        return;
    }
    m_pages = new QPdfView(this);
    // Drops reach the view beneath.
    m_pages->setAcceptDrops(false);
    m_pages->viewport()->setAcceptDrops(false);
    m_pages->setFrameShape(QFrame::NoFrame);
    m_pages->setPageMode(QPdfView::PageMode::MultiPage);
    m_pages->setZoomMode(QPdfView::ZoomMode::FitToWidth);
    m_pages->setAccessibleName(accessibleName());
    m_pages->setGeometry(rect().adjusted(margin, margin, -margin, -margin));
    m_pages->setDocument(m_document);
    m_pages->show();
    m_pages->setFocus();
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
    if (m_kind == Kind::None) {
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
