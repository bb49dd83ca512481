#include "ui/charts/BarChartView.h"

#include "ui/Conversions.h"
#include "ui/DrawingPainter.h"
#include "ui/charts/ChartColors.h"
#include "ui/charts/ChartModel.h"
#include "ui/views/EmptyState.h"

#include <QFontInfo>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kpx {

namespace {

constexpr int margin = 12;

}  // namespace

BarChartView::BarChartView(QWidget* parent) : QTableView(parent), m_model(new ChartModel(this)) {
    horizontalHeader()->hide();
    verticalHeader()->hide();
    QTableView::setModel(m_model);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    viewport()->setMouseTracking(true);
}

void BarChartView::setChart(const Chart& chart) {
    if (m_model->chart() == chart) {
        return;
    }
    m_hovered = QModelIndex();
    m_model->setChart(chart);
    setAccessibleName(qstring(chart.title));
    if (hasFocus() && !chart.bars.empty()) {
        setCurrentIndex(m_model->index(0, 0));
    }
    layOut();
}

double BarChartView::textSize() const { return QFontInfo(font()).pixelSize(); }

double BarChartView::captionHeight() const { return textSize() * 2.2; }

QSize BarChartView::minimumSizeHint() const { return QSize(20, 12) * textSize() + QSize(2 * margin, 2 * margin); }

void BarChartView::layOut() {
    const QSizeF size = viewport()->size();
    m_picture =
        layOutChart(m_model->chart(), {.box = {.left = margin,
                                               .bottom = margin,
                                               .width = std::max(1.0, size.width() - 2 * margin),
                                               .height = std::max(1.0, size.height() - margin - captionHeight())},
                                       .textSize = textSize(),
                                       .mirrored = isRightToLeft()});
    viewport()->update();
}

QModelIndex BarChartView::said() const {
    if (m_hovered.isValid()) {
        return m_hovered;
    }
    return hasFocus() ? currentIndex() : QModelIndex();
}

QString BarChartView::saidBar() const { return said().isValid() ? m_model->said(said().row()) : QString(); }

QRect BarChartView::visualRect(const QModelIndex& index) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= m_picture.slots.size()) {
        return {};
    }
    const kpx::Box& slot = m_picture.slots[row];
    return QRectF(slot.left, viewport()->height() - slot.top(), slot.width, slot.height).toAlignedRect();
}

QModelIndex BarChartView::indexAt(const QPoint& point) const {
    const double x = point.x() + 0.5;
    const double y = viewport()->height() - point.y() - 0.5;
    const auto slot = std::ranges::find_if(m_picture.slots, [&](const kpx::Box& box) { return box.contains(x, y); });
    return slot == m_picture.slots.end() ? QModelIndex()
                                         : m_model->index(static_cast<int>(slot - m_picture.slots.begin()), 0);
}

void BarChartView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    if (m_picture.slots.empty()) {
        drawEmptyState(painter, viewport()->rect(), palette(), font(), m_emptyTitle, m_emptyText);
        return;
    }
    const Inks inks = chartInks(palette());
    if (const QModelIndex index = said(); index.isValid()) {
        painter.fillRect(visualRect(index), highlightedSlot(palette()));
    }
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(1 / DrawingPainter::unitsPerPoint, 1 / DrawingPainter::unitsPerPoint);
    const double width = viewport()->width() - 2 * margin;
    const DrawText caption{.text = utf8(saidBar()),
                           .font = "LucidaGrande-Bold",
                           .size = textSize(),
                           .x = isRightToLeft() ? margin + width : margin,
                           .y = viewport()->height() - captionHeight() + textSize() * 0.7,
                           .room = width,
                           .alignment = isRightToLeft() ? Alignment::Right : Alignment::Left};
    DrawingPainter drawing(viewport()->height(), inks, {.family = QFontInfo(font()).family()});
    drawing.paint(painter, {caption});
    drawing.paint(painter, m_picture.operations);
}

void BarChartView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    layOut();
}

void BarChartView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange) {
        layOut();
    }
}

void BarChartView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    if (!currentIndex().isValid() && m_model->rowCount() > 0) {
        setCurrentIndex(m_model->index(0, 0));
    }
    // The frame too.
    update();
}

void BarChartView::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    update();
}

void BarChartView::setHovered(const QModelIndex& index) {
    if (m_hovered != index) {
        m_hovered = index;
        viewport()->update();
    }
}

void BarChartView::mouseMoveEvent(QMouseEvent* event) { setHovered(indexAt(event->pos())); }

bool BarChartView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) {
        setHovered({});
    }
    return QTableView::viewportEvent(event);
}

QModelIndex BarChartView::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
    const int last = m_model->rowCount() - 1;
    if (last < 0) {
        return {};
    }
    const bool mirrored = isRightToLeft() && m_model->chart().shape == Chart::Shape::Columns;
    const int row = currentIndex().row();
    const auto to = [&](int target) { return m_model->index(std::clamp(target, 0, last), 0); };
    switch (action) {
        case MoveLeft:
            return to(mirrored ? row + 1 : row - 1);
        case MoveRight:
            return to(mirrored ? row - 1 : row + 1);
        case MoveUp:
        case MovePrevious:
            return to(row - 1);
        case MoveDown:
        case MoveNext:
            return to(row + 1);
        case MoveHome:
        case MovePageUp:
            return to(0);
        case MoveEnd:
        case MovePageDown:
            return to(last);
    }
    return currentIndex();
}

QRegion BarChartView::visualRegionForSelection(const QItemSelection&) const { return viewport()->rect(); }

void BarChartView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    m_hovered = QModelIndex();
    viewport()->update();
}

}  // namespace kpx
