#pragma once

#include "decoding/PageStream.h"

#include <QAbstractScrollArea>
#include <QImage>

#include <map>
#include <set>

namespace kpx {

/// The pages of a document one below the other, as one continuous sheet. It has pictures of the pages in sight
/// and of their neighbours only, and asks for those it lacks.
class ReceiptPages : public QAbstractScrollArea {
    Q_OBJECT

public:
    /// Sizes in pixels of the screen. The first `alreadyAsked` pages are on their way.
    ReceiptPages(DocumentOutline outline, int alreadyAsked, QWidget* parent);

    int pageCount() const { return static_cast<int>(m_outline.pages.size()); }
    void setPicture(int index, const QImage& picture);
    /// The pages asked for last are all there are: those among them without a picture cannot be shown, the first
    /// one for certain, and the others are asked for once more.
    void answered();
    /// Whether the page's picture is there; for a page far from what is in sight it is dropped again.
    bool hasPicture(int index) const { return m_pictures.contains(index); }

Q_SIGNALS:
    /// Not while an earlier request is unanswered.
    void wanted(int firstPage, int pageCount);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QSizeF shownSize(int index) const;
    /// The first page that ends below that place of the sheet; the last one for a place below all.
    int pageAt(double y) const;
    void updateScrollBars();
    void askForWhatIsInSight();
    void drawPage(QPainter& painter, int index, const QRectF& paper) const;

    DocumentOutline m_outline;
    std::vector<double> m_tops;  ///< of each page, and the end of the last one
    std::map<int, QImage> m_pictures;
    std::set<int> m_withoutPicture;  ///< pages that cannot be shown
    int m_askedFirst = 0;            ///< -1 while nothing is asked for
    int m_askedEnd;
};

}  // namespace kpx
