#pragma once

#include "reports/Document.h"

#include <QFont>
#include <QSizeF>

#include <map>
#include <string>
#include <tuple>

class QPainter;
class QString;

namespace kpx {

/// Puts the pages of a report on paper, screen or PDF: the one painter for all of them.
///
/// The named fonts have a stand-in with nearly their look, DejaVu Sans, that every desktop can install.
/// It is laid out without hinting, so a line breaks nowhere and is as wide on the screen as in print.
class ReportPainter {
public:
    /// Painters handed to paint() count in this many units per inch, tenths of a point: fine enough for the
    /// places to come out exactly, and whole for every font size used.
    static constexpr int unitsPerInch = 720;
    static constexpr double unitsPerPoint = unitsPerInch / 72.0;

    /// In points. Documents count from the lower left corner, so the height decides where things stand.
    explicit ReportPainter(QSizeF pageSize) : m_pageSize(pageSize) {}

    /// REQUIRES: the painter's origin is the page's upper left corner, its unit a tenth of a point.
    void paint(QPainter& painter, const Page& page);

    /// The stand-in's, unrounded. A device would answer whole pixels, and 45 rows would no longer fit a page.
    static FontMetrics metrics(double size);

private:
    void paintText(QPainter& painter, const DrawText& text);
    void paintLine(QPainter& painter, const DrawLine& line);
    const QFont& font(const DrawText& text, bool needsShaping);
    double fromTop(double y) const { return (m_pageSize.height() - y) * unitsPerPoint; }

    QSizeF m_pageSize;
    std::map<std::tuple<std::string, double, bool, bool>, QFont> m_fonts;
};

}  // namespace kpx
