#pragma once

#include "drawing/Document.h"
#include "ui/ReportPainter.h"

#include <QList>
#include <QRectF>
#include <QString>

#include <vector>

namespace kpx {

/// A document's words as one text, to be searched, copied and read aloud: a line of it for a line on the
/// paper, with tabs between its columns; and for each part of the text its place on the sheets. The text is
/// whole also where the paper has room for the beginning only.
class DocumentText {
public:
    /// Both outlive it.
    DocumentText(const Document& document, ReportPainter& painter);

    const QString& text() const { return m_text; }

    /// Where the part from one position to another stands on the page, in points from the sheet's upper left corner.
    QList<QRectF> placesOf(int page, int from, int to) const;
    /// The position nearest to the point of the page.
    int positionAt(int page, QPointF point) const;
    /// Counted from 0.
    int pageOf(int position) const;

private:
    struct Piece {
        const DrawText* drawn;
        int page;
        int start;
        int end;
    };
    QRectF placeOf(const Piece& piece) const;
    /// Between two distances from the left end of the piece, in points.
    QRectF placeOf(const Piece& piece, double from, double to) const;
    void appendPlaces(QList<QRectF>& places, const Piece& piece, int from, int to) const;
    int positionIn(const Piece& piece, double x) const;

    ReportPainter& m_painter;
    QString m_text;
    std::vector<Piece> m_pieces;
};

}  // namespace kpx
