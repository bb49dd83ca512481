#pragma once

#include "reports/Document.h"
#include "ui/ReportPainter.h"

#include <QAbstractScrollArea>
#include <QPageLayout>

namespace kpx {

/// The pages of a report one below the other, white sheets on the window's ground.
class PagesView : public QAbstractScrollArea {
    Q_OBJECT

public:
    /// The document outlives the view.
    PagesView(const Document& document, const QPageLayout& layout, QWidget* parent = nullptr);

    int pageCount() const { return static_cast<int>(m_document.pages.size()); }
    /// The page, counted from 1, in the middle of what is seen.
    int currentPage() const;

    /// 1 shows the paper in its size.
    double zoom() const { return m_zoom; }
    void setZoom(double zoom);
    void zoomIn();
    void zoomOut();
    /// As wide as the view, and so it stays when the view's width changes, until another zoom is asked for.
    void fitWidth();
    bool isFittingWidth() const { return m_fitsWidth; }

Q_SIGNALS:
    void shownPartChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void applyZoom(double zoom);
    void updateScrollBars();
    double pixelsPerPoint() const;
    /// In pixels of the view.
    QSizeF sheetSize() const;
    double sheetTop(int index) const;
    double sheetLeft() const;

    const Document& m_document;
    QSizeF m_pageSize;
    ReportPainter m_painter;
    double m_zoom = 1;
    bool m_fitsWidth = true;
};

}  // namespace kpx
