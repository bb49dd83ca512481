#include "ui/ports/QtPrintPreview.h"

#include <utility>

namespace kpx {

void QtPrintPreview::open(Document document) { m_documents.push_back(std::move(document)); }

FontMetrics QtPrintPreview::metrics(const std::string&, double size) {
    // The font that stands in for the named ones, DejaVu Sans, regular and bold alike, in units of its em
    // square. Asked of a device the metrics would come rounded, and 45 rows would no longer fit a page.
    constexpr double unitsPerEm = 2048;
    return {1901 / unitsPerEm * size, 483 / unitsPerEm * size};
}

}  // namespace kpx
