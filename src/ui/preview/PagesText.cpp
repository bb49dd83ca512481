#include "ui/preview/PagesView.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>

// The words on the pages: selecting, copying, searching, and stepping through them line by line.

namespace kpx {

namespace {

/// The colour of selected words on white paper, in every appearance.
constexpr QColor selectionOnPaper(0xB9, 0xD7, 0xFB);

}  // namespace

DocumentText& PagesView::documentText() {
    // Made when it is first asked for: a long report is looked at far more often than it is searched.
    return m_text ? *m_text : m_text.emplace(m_document, m_painter);
}

QString PagesView::selectedText() {
    return m_anchor == m_cursor ? QString() : text().mid(std::min(m_anchor, m_cursor), std::abs(m_cursor - m_anchor));
}

void PagesView::select(int anchor, int cursor) {
    const auto last = static_cast<int>(text().size());
    anchor = std::clamp(anchor, 0, last);
    cursor = std::clamp(cursor, 0, last);
    if (anchor == m_anchor && cursor == m_cursor) {
        return;
    }
    const bool moved = cursor != m_cursor;
    m_anchor = anchor;
    m_cursor = cursor;
    viewport()->update();
    if (moved) {
        QAccessibleTextCursorEvent event(this, m_cursor);
        QAccessible::updateAccessibility(&event);
    }
    QAccessibleTextSelectionEvent event(this, std::min(m_anchor, m_cursor), std::max(m_anchor, m_cursor));
    QAccessible::updateAccessibility(&event);
}

void PagesView::selectAll() { select(0, static_cast<int>(text().size())); }

void PagesView::copy() {
    if (const QString selected = selectedText(); !selected.isEmpty()) {
        QGuiApplication::clipboard()->setText(selected);
    }
}

bool PagesView::selectMatch(qsizetype position, qsizetype length) {
    if (position < 0) {
        return false;
    }
    select(static_cast<int>(position), static_cast<int>(position + length));
    ensureSeen(static_cast<int>(position));
    return true;
}

bool PagesView::findNext(const QString& words) {
    return findFrom(std::min(m_anchor, m_cursor) + (m_anchor == m_cursor ? 0 : 1), words);
}

bool PagesView::findAsTyped(const QString& words) { return findFrom(std::min(m_anchor, m_cursor), words); }

bool PagesView::findFrom(qsizetype position, const QString& words) {
    if (words.isEmpty()) {
        return false;
    }
    const qsizetype next = text().indexOf(words, position, Qt::CaseInsensitive);
    return selectMatch(next >= 0 ? next : text().indexOf(words, 0, Qt::CaseInsensitive), words.size());
}

bool PagesView::findPrevious(const QString& words) {
    if (words.isEmpty()) {
        return false;
    }
    const int before = std::min(m_anchor, m_cursor) - 1;
    const qsizetype previous = before < 0 ? -1 : text().lastIndexOf(words, before, Qt::CaseInsensitive);
    return selectMatch(previous >= 0 ? previous : text().lastIndexOf(words, -1, Qt::CaseInsensitive), words.size());
}

QRect PagesView::seenPlace(int from, int to) {
    const int page = documentText().pageOf(from);
    QRectF around;
    for (const QRectF& place : documentText().placesOf(page, from, to)) {
        around |= place;
    }
    if (around.isEmpty()) {
        return {};
    }
    const double scale = pixelsPerPoint();
    return QRectF(sheet(page).topLeft() + around.topLeft() * scale, around.size() * scale).toAlignedRect();
}

int PagesView::positionAt(const QPoint& point) {
    int page = 0;
    while (page + 1 < pageCount() && sheet(page + 1).top() <= point.y()) {
        ++page;
    }
    return documentText().positionAt(page, (point - sheet(page).topLeft()) / pixelsPerPoint());
}

void PagesView::ensureSeen(int position) {
    const QRect place = seenPlace(position, position + 1);
    if (place.isEmpty()) {
        return;
    }
    const QRect seen = viewport()->rect();
    const auto bring = [](QScrollBar& bar, int from, int to, int end) {
        constexpr int around = 40;
        if (from < 0) {
            bar.setValue(bar.value() + from - around);
        } else if (to > end) {
            bar.setValue(bar.value() + to - end + around);
        }
    };
    bring(*verticalScrollBar(), place.top(), place.bottom(), seen.bottom());
    bring(*horizontalScrollBar(), place.left(), place.right(), seen.right());
}

void PagesView::paintSelection(QPainter& painter, int page, const QRectF& paper) {
    if (m_anchor == m_cursor) {
        return;
    }
    const int from = std::min(m_anchor, m_cursor);
    const int to = std::max(m_anchor, m_cursor);
    const double scale = pixelsPerPoint();
    for (const QRectF& place : documentText().placesOf(page, from, to)) {
        painter.fillRect(QRectF(paper.topLeft() + place.topLeft() * scale, place.size() * scale), selectionOnPaper);
    }
}

/// Up and Down scroll, unless the screen is read to somebody: then they go from line to line, to be heard.
bool PagesView::moveByLine(int key, bool selects) {
    if ((key != Qt::Key_Up && key != Qt::Key_Down) || !(selects || QAccessible::isActive())) {
        return false;
    }
    const QString& all = text();
    qsizetype target = 0;
    if (key == Qt::Key_Down) {
        const qsizetype end = all.indexOf(QLatin1Char('\n'), m_cursor);
        target = end < 0 ? all.size() : end + 1;
    } else {
        const qsizetype start = m_cursor == 0 ? -1 : all.lastIndexOf(QLatin1Char('\n'), m_cursor - 1);
        target = start <= 0 ? 0 : all.lastIndexOf(QLatin1Char('\n'), start - 1) + 1;
    }
    select(selects ? m_anchor : static_cast<int>(target), static_cast<int>(target));
    ensureSeen(m_cursor);
    return true;
}

void PagesView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const int position = positionAt(event->pos());
        select(event->modifiers().testFlag(Qt::ShiftModifier) ? m_anchor : position, position);
    }
}

void PagesView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton)) {
        select(m_anchor, positionAt(event->pos()));
    }
}

void PagesView::mouseDoubleClickEvent(QMouseEvent* event) {
    const int position = positionAt(event->pos());
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text());
    words.setPosition(position);
    const qsizetype start = words.isAtBoundary() ? position : words.toPreviousBoundary();
    words.setPosition(position);
    const qsizetype end = words.toNextBoundary();
    select(static_cast<int>(std::max<qsizetype>(start, 0)), static_cast<int>(end < 0 ? text().size() : end));
}

}  // namespace kpx
