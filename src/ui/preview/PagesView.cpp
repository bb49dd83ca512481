#include "ui/preview/PagesView.h"

#include "ui/preview/AccessiblePages.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace kpx {

namespace {

constexpr double gap = 16;
constexpr std::array zoomSteps{0.25, 0.33, 0.5, 0.67, 0.75, 1.0, 1.25, 1.5, 2.0, 3.0, 4.0};

}  // namespace

PagesView::PagesView(Document document, const QPageLayout& layout, QWidget* parent)
    : QAbstractScrollArea(parent),
      m_document(std::move(document)),
      m_pageSize(layout.fullRectPoints().size()),
      m_painter(m_pageSize) {
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    viewport()->setBackgroundRole(QPalette::Window);
    viewport()->setCursor(Qt::IBeamCursor);
    // A page has its beginning at the left whichever way the window is read.
    horizontalScrollBar()->setLayoutDirection(Qt::LeftToRight);
    setAccessibleName(tr("Pages"));
    installAccessiblePages();
}

double PagesView::pixelsPerPoint() const { return m_zoom * logicalDpiX() / 72.0; }

QSizeF PagesView::sheetSize() const { return m_pageSize * pixelsPerPoint(); }

double PagesView::sheetTop(int index) const {
    return gap + index * (sheetSize().height() + gap) - verticalScrollBar()->value();
}

double PagesView::sheetLeft() const {
    const double free = viewport()->width() - sheetSize().width();
    return free > 2 * gap ? free / 2 : gap - horizontalScrollBar()->value();
}

QRectF PagesView::sheet(int index) const {
    return QRectF(QPointF(std::round(sheetLeft()), std::round(sheetTop(index))), sheetSize());
}

int PagesView::currentPage() const {
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    const int index = static_cast<int>((middle - gap / 2) / (sheetSize().height() + gap));
    return std::clamp(index + 1, 1, std::max(pageCount(), 1));
}

void PagesView::setZoom(double zoom) {
    m_fitsWidth = false;
    applyZoom(zoom);
}

void PagesView::zoomIn() {
    const auto next = std::ranges::find_if(zoomSteps, [this](double step) { return step > m_zoom * 1.01; });
    setZoom(next == zoomSteps.end() ? zoomSteps.back() : *next);
}

void PagesView::zoomOut() {
    const auto next =
        std::find_if(zoomSteps.rbegin(), zoomSteps.rend(), [this](double step) { return step < m_zoom / 1.01; });
    setZoom(next == zoomSteps.rend() ? zoomSteps.front() : *next);
}

void PagesView::fitWidth() {
    m_fitsWidth = true;
    const double free = viewport()->width() - 2 * gap;
    applyZoom(free / (m_pageSize.width() * logicalDpiX() / 72.0));
}

void PagesView::applyZoom(double zoom) {
    // What stood in the middle stays there; at the very top, the top.
    const double middle = verticalScrollBar()->value() == 0 ? 0 : viewport()->height() / 2.0;
    const double seen = (verticalScrollBar()->value() + middle) / m_zoom;
    m_zoom = std::clamp(zoom, zoomSteps.front(), zoomSteps.back());
    updateScrollBars();
    verticalScrollBar()->setValue(static_cast<int>(std::lround(seen * m_zoom - middle)));
    viewport()->update();
    Q_EMIT shownPartChanged();
}

void PagesView::updateScrollBars() {
    const QSizeF sheet = sheetSize();
    const double height = gap + pageCount() * (sheet.height() + gap);
    const double width = sheet.width() + 2 * gap;
    verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(std::ceil(height)) - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
    // Half a pixel more is rounding, not something to scroll to.
    horizontalScrollBar()->setRange(0, std::max(0, static_cast<int>(std::floor(width)) - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(40);
}

void PagesView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Window).darker(112));
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (int index = 0; index < pageCount(); ++index) {
        const QRectF paper = sheet(index);
        if (paper.top() > event->rect().bottom()) {
            break;
        }
        if (paper.bottom() < event->rect().top()) {
            continue;
        }
        painter.fillRect(paper, Qt::white);
        paintSelection(painter, index, paper);
        painter.save();
        painter.setClipRect(paper);
        painter.translate(paper.topLeft());
        painter.scale(pixelsPerPoint() / ReportPainter::unitsPerPoint, pixelsPerPoint() / ReportPainter::unitsPerPoint);
        m_painter.paint(painter, m_document.pages[static_cast<std::size_t>(index)]);
        painter.restore();
    }
}

void PagesView::resizeEvent(QResizeEvent*) {
    if (m_fitsWidth) {
        fitWidth();
    } else {
        updateScrollBars();
        Q_EMIT shownPartChanged();
    }
}

void PagesView::scrollContentsBy(int, int) {
    viewport()->update();
    Q_EMIT shownPartChanged();
}

void PagesView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
    } else if (event->angleDelta().y() > 0) {
        zoomIn();
    } else if (event->angleDelta().y() < 0) {
        zoomOut();
    }
}

void PagesView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Home) {
        verticalScrollBar()->setValue(0);
    } else if (event->key() == Qt::Key_End) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    } else if (!moveByLine(event->key(), event->modifiers().testFlag(Qt::ShiftModifier))) {
        QAbstractScrollArea::keyPressEvent(event);
    }
}

}  // namespace kpx
