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

QRectF DocumentText::placeOf(const Piece& piece) const {
    return m_painter.placed(m_painter.drawing().placeOf(*piece.drawn));
}

QRectF DocumentText::placeOf(const Piece& piece, double from, double to) const {
    QRectF place = m_painter.drawing().placeOf(*piece.drawn);
    const double left = place.left();
    place.setLeft(left + std::min(from, to));
    place.setRight(left + std::max(from, to));
    return m_painter.placed(place);
}

void DocumentText::appendPlaces(QList<QRectF>& places, const Piece& piece, int from, int to) const {
    if (from == piece.start && to == piece.end) {
        places.append(placeOf(piece));
        return;
    }
    const std::vector<CharacterPlace> characters = m_painter.drawing().charactersOf(*piece.drawn);
    double begin = characters[static_cast<std::size_t>(from - piece.start)].begin;
    double end = begin;
    // Where the direction of writing changes, what follows in the text may stand elsewhere on the line.
    for (int position = from; position < to; ++position) {
        const CharacterPlace& character = characters[static_cast<std::size_t>(position - piece.start)];
        if (std::abs(character.begin - end) > 0.01) {
            places.append(placeOf(piece, begin, end));
            begin = character.begin;
        }
        end = character.end;
    }
    places.append(placeOf(piece, begin, end));
}

int DocumentText::positionIn(const Piece& piece, double x) const {
    const std::vector<CharacterPlace> characters = m_painter.drawing().charactersOf(*piece.drawn);
    double nearest = std::numeric_limits<double>::max();
    int position = piece.start;
    const auto consider = [&](double edge, std::size_t index) {
        const double distance = std::abs(placeOf(piece, edge, edge).left() - x);
        if (distance < nearest) {
            nearest = distance;
            position = piece.start + static_cast<int>(index);
        }
    };
    for (std::size_t index = 0; index < characters.size(); ++index) {
        consider(characters[index].begin, index);
        consider(characters[index].end, index + 1);
    }
    return position;
}

QList<QRectF> DocumentText::placesOf(int page, int from, int to) const {
    QList<QRectF> places;
    auto piece = std::ranges::lower_bound(m_pieces, from, {}, &Piece::end);
    for (; piece != m_pieces.end() && piece->start < to; ++piece) {
        const int first = std::max(from, piece->start);
        const int last = std::min(to, piece->end);
        if (piece->page == page && first < last) {
            appendPlaces(places, *piece, first, last);
        }
    }
    return places;
}

int DocumentText::positionAt(int page, QPointF point) const {
    const auto [first, last] = std::ranges::equal_range(m_pieces, page, {}, &Piece::page);
    double nearest = std::numeric_limits<double>::max();
    auto found = last;
    for (auto piece = first; piece != last; ++piece) {
        const QRectF place = placeOf(*piece);
        const double beside = std::max({place.left() - point.x(), 0.0, point.x() - place.right()});
        const double above = std::max({place.top() - point.y(), 0.0, point.y() - place.bottom()});
        // The line counts before the place in it.
        const double distance = above * 1000 + beside;
        if (distance >= nearest) {
            continue;
        }
        nearest = distance;
        found = piece;
    }
    return found == last ? 0 : positionIn(*found, point.x());
}

int DocumentText::pageOf(int position) const {
    const auto piece = std::ranges::lower_bound(m_pieces, position, {}, &Piece::end);
    return piece != m_pieces.end() ? piece->page : m_pieces.empty() ? 0 : m_pieces.back().page;
}

}  // namespace kpx
