#pragma once

#include "drawing/Document.h"
#include "ui/ReportPainter.h"
#include "ui/preview/DocumentText.h"

#include <QAbstractScrollArea>
#include <QPageLayout>

#include <optional>

namespace kpx {

/// The pages of a document one below the other, white sheets on the window's ground. Their text can be selected,
/// copied and searched, and is text to those who have the screen read to them.
class PagesView : public QAbstractScrollArea {
    Q_OBJECT

public:
    PagesView(Document document, const QPageLayout& layout, QWidget* parent = nullptr);

    const Document& document() const { return m_document; }
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

    /// All words of the document, a line for a line.
    const QString& text() { return documentText().text(); }
    /// Positions in the text; equal when nothing is selected.
    int anchor() const { return m_anchor; }
    int cursor() const { return m_cursor; }
    QString selectedText();
    void select(int anchor, int cursor);
    void selectAll();
    void copy();
    /// Selects the next place of the words, whatever their case, and shows it; after the last one again the first.
    /// False when there is none.
    bool findNext(const QString& words);
    /// Likewise, but stays where it is while the place goes on as typed.
    bool findAsTyped(const QString& words);
    bool findPrevious(const QString& words);
    /// Where the part of the text is seen, in pixels of the viewport; empty for no text.
    QRect seenPlace(int from, int to);
    int positionAt(const QPoint& point);
    void ensureSeen(int position);

Q_SIGNALS:
    void shownPartChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    DocumentText& documentText();
    void applyZoom(double zoom);
    void updateScrollBars();
    void paintSelection(QPainter& painter, int page, const QRectF& paper);
    bool selectMatch(qsizetype position, qsizetype length);
    bool findFrom(qsizetype position, const QString& words);
    bool moveByLine(int key, bool selects);
    double pixelsPerPoint() const;
    /// In pixels of the view.
    QSizeF sheetSize() const;
    QRectF sheet(int index) const;
    double sheetTop(int index) const;
    double sheetLeft() const;

    Document m_document;
    QSizeF m_pageSize;
    ReportPainter m_painter;
    std::optional<DocumentText> m_text;
    int m_anchor = 0;
    int m_cursor = 0;
    double m_zoom = 1;
    bool m_fitsWidth = true;
};

}  // namespace kpx
