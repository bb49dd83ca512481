#pragma once

#include "drawing/Document.h"
#include "ui/DrawingPainter.h"

#include <QRectF>
#include <QSizeF>
#include <QTransform>

class QPainter;

namespace kpx {

/// Puts the pages of a document on sheets of paper.
///
/// What is drawn lies between x 20 and 788, y 20 and 580. A sheet that holds this shows it in its size from
/// the lower left corner; on a smaller one it is scaled, with its margin, to fit. On a sheet that stands
/// upright it is turned by a quarter, to be read from the right.
class ReportPainter {
public:
    static constexpr int unitsPerInch = DrawingPainter::unitsPerInch;
    static constexpr double unitsPerPoint = DrawingPainter::unitsPerPoint;

    /// In points.
    explicit ReportPainter(QSizeF pageSize);

    /// REQUIRES: the painter's origin is the page's upper left corner, its unit a tenth of a point.
    void paint(QPainter& painter, const Page& page);

    /// What paints the pages, before they are placed on the sheet.
    DrawingPainter& drawing() { return m_painter; }
    /// Where on the sheet a place of the drawing comes to lie, both in points from the upper left corner.
    QRectF placed(const QRectF& place) const;

    /// The stand-in font's, unrounded. A device would answer whole pixels, and 45 rows would no longer fit a page.
    static FontMetrics metrics(double size);

private:
    struct Sheet {
        double height;
        QTransform placement;
    };
    static Sheet sheetFor(QSizeF pageSize);
    explicit ReportPainter(const Sheet& sheet) : m_painter(sheet.height), m_placement(sheet.placement) {}

    DrawingPainter m_painter;
    QTransform m_placement;
};

}  // namespace kpx
