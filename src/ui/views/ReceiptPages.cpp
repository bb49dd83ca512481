#include "ui/views/ReceiptPages.h"

#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kpx {

namespace {

constexpr double gap = 6;
/// Pages asked for at a time, and kept before and behind those in sight.
constexpr int neighbours = 4;

}  // namespace

ReceiptPages::ReceiptPages(DocumentOutline outline, int alreadyAsked, QWidget* parent)
    : QAbstractScrollArea(parent), m_outline(std::move(outline)), m_askedEnd(std::min(alreadyAsked, pageCount())) {
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // So that no page changes its width when the bar comes.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    // Drops reach the view beneath.
    setAcceptDrops(false);
    viewport()->setAcceptDrops(false);
    updateScrollBars();
}

QSizeF ReceiptPages::shownSize(int index) const {
    const PixelSize size = m_outline.pages[static_cast<std::size_t>(index)];
    return QSizeF(size.width, size.height) / devicePixelRatioF();
}

void ReceiptPages::updateScrollBars() {
    m_tops.assign(1, 0);
    for (int index = 0; index < pageCount(); ++index) {
        m_tops.push_back(m_tops.back() + shownSize(index).height() + gap);
    }
    const double height = m_tops.back() - gap;
    verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(std::ceil(height)) - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
}

int ReceiptPages::pageAt(double y) const {
    const auto below = std::upper_bound(m_tops.begin(), m_tops.end(), y);
    return std::clamp(static_cast<int>(below - m_tops.begin()) - 1, 0, pageCount() - 1);
}

void ReceiptPages::setPicture(int index, const QImage& picture) {
    m_pictures[index] = picture;
    viewport()->update();
}

void ReceiptPages::answered() {
    for (int index = m_askedFirst; index >= 0 && index < m_askedEnd; ++index) {
        if (!hasPicture(index)) {
            m_withoutPicture.insert(index);
            break;
        }
    }
    m_askedFirst = -1;
    m_askedEnd = -1;
    viewport()->update();
    askForWhatIsInSight();
}

void ReceiptPages::askForWhatIsInSight() {
    const double top = verticalScrollBar()->value();
    const int first = pageAt(top);
    const int last = pageAt(top + viewport()->height());
    std::erase_if(m_pictures, [&](const auto& entry) {
        return entry.first < first - 2 * neighbours || entry.first > last + 2 * neighbours;
    });
    const auto lacks = [this](int index) { return !hasPicture(index) && !m_withoutPicture.contains(index); };
    for (int index = first; m_askedFirst < 0 && index <= last; ++index) {
        if (lacks(index)) {
            m_askedFirst = index;
            m_askedEnd = index + 1;
            while (m_askedEnd < std::min(pageCount(), index + neighbours) && lacks(m_askedEnd)) {
                ++m_askedEnd;
            }
            Q_EMIT wanted(m_askedFirst, m_askedEnd - m_askedFirst);
        }
    }
}

void ReceiptPages::drawPage(QPainter& painter, int index, const QRectF& paper) const {
    painter.fillRect(paper, Qt::white);
    const auto picture = m_pictures.find(index);
    if (picture != m_pictures.end()) {
        painter.drawImage(paper, picture->second);
    } else if (m_withoutPicture.contains(index)) {
        painter.setPen(Qt::darkGray);
        painter.drawText(paper, Qt::AlignCenter | Qt::TextWordWrap, tr("This page cannot be shown."));
    }
}

void ReceiptPages::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillRect(event->rect(), palette().color(QPalette::Window).darker(112));
    const double top = verticalScrollBar()->value();
    const int last = pageAt(top + viewport()->height());
    for (int index = pageAt(top); index <= last; ++index) {
        const QSizeF size = shownSize(index);
        const double left = (viewport()->width() - size.width()) / 2;
        const QPointF corner(std::round(std::max(0.0, left)),
                             std::round(m_tops[static_cast<std::size_t>(index)] - top));
        drawPage(painter, index, QRectF(corner, size));
    }
}

void ReceiptPages::resizeEvent(QResizeEvent*) {
    updateScrollBars();
    askForWhatIsInSight();
}

void ReceiptPages::scrollContentsBy(int, int) {
    viewport()->update();
    askForWhatIsInSight();
}

void ReceiptPages::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Home:
            verticalScrollBar()->setValue(0);
            return;
        case Qt::Key_End:
            verticalScrollBar()->setValue(verticalScrollBar()->maximum());
            return;
        case Qt::Key_Space:
            verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
            return;
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

}  // namespace kpx
