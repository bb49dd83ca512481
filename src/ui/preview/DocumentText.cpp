#include "ui/preview/DocumentText.h"

#include "drawing/ReadingOrder.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kpx {

DocumentText::DocumentText(const Document& document, ReportPainter& painter) : m_painter(painter) {
    int page = 0;
    for (const Page& drawn : document.pages) {
        for (const auto& line : linesInReadingOrder(drawn)) {
            if (!m_text.isEmpty()) {
                m_text.append(QLatin1Char('\n'));
            }
            for (const DrawText* text : line) {
                if (text != line.front()) {
                    m_text.append(QLatin1Char('\t'));
                }
                const auto start = static_cast<int>(m_text.size());
                m_text.append(DrawingPainter::oneLine(*text));
                m_pieces.push_back({text, page, start, static_cast<int>(m_text.size())});
            }
        }
        ++page;
    }
}

QRectF DocumentText::placeOf(const Piece& piece, int from, int to) const {
    DrawingPainter& drawing = m_painter.drawing();
    QRectF place = drawing.placeOf(*piece.drawn);
    const double left = place.left();
    place.setLeft(left + drawing.reachOf(*piece.drawn, from - piece.start));
    place.setRight(left + drawing.reachOf(*piece.drawn, to - piece.start));
    return m_painter.placed(place);
}

QList<QRectF> DocumentText::placesOf(int page, int from, int to) const {
    QList<QRectF> places;
    auto piece = std::ranges::lower_bound(m_pieces, from, {}, &Piece::end);
    for (; piece != m_pieces.end() && piece->start < to; ++piece) {
        const int first = std::max(from, piece->start);
        const int last = std::min(to, piece->end);
        if (piece->page == page && first < last) {
            places.append(placeOf(*piece, first, last));
        }
    }
    return places;
}

int DocumentText::positionAt(int page, QPointF point) const {
    const auto [first, last] = std::ranges::equal_range(m_pieces, page, {}, &Piece::page);
    double nearest = std::numeric_limits<double>::max();
    int position = 0;
    for (auto piece = first; piece != last; ++piece) {
        const QRectF place = placeOf(*piece, piece->start, piece->end);
        const double beside = std::max({place.left() - point.x(), 0.0, point.x() - place.right()});
        const double above = std::max({place.top() - point.y(), 0.0, point.y() - place.bottom()});
        // The line counts before the place in it.
        const double distance = above * 1000 + beside;
        if (distance >= nearest) {
            continue;
        }
        nearest = distance;
        position = piece->start;
        while (position < piece->end && placeOf(*piece, position, position + 1).center().x() < point.x()) {
            ++position;
        }
    }
    return position;
}

int DocumentText::pageOf(int position) const {
    const auto piece = std::ranges::lower_bound(m_pieces, position, {}, &Piece::end);
    return piece != m_pieces.end() ? piece->page : m_pieces.empty() ? 0 : m_pieces.back().page;
}

}  // namespace kpx
