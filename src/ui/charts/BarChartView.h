#pragma once

#include "drawing/Chart.h"
#include "drawing/ChartLayout.h"

#include <QPersistentModelIndex>
#include <QTableView>

namespace kpx {

class ChartModel;

/// A chart on the screen. To the keyboard and to those who have the screen read to them it is the table of its
/// bars, one after the other; to the eye it is the picture. The bar under the pointer, else the one reached by the
/// arrow keys, is said in words above it.
class BarChartView : public QTableView {
    Q_OBJECT
    Q_PROPERTY(QString emptyTitle READ emptyTitle WRITE setEmptyTitle)
    Q_PROPERTY(QString emptyText READ emptyText WRITE setEmptyText)

public:
    explicit BarChartView(QWidget* parent = nullptr);

    QString emptyTitle() const { return m_emptyTitle; }
    void setEmptyTitle(const QString& title) { m_emptyTitle = title; }
    QString emptyText() const { return m_emptyText; }
    void setEmptyText(const QString& text) { m_emptyText = text; }

    void setChart(const Chart& chart);

    /// What stands above the picture now: "Nov 2026: $12.50", or nothing.
    QString saidBar() const;

    QRect visualRect(const QModelIndex& index) const override;
    QModelIndex indexAt(const QPoint& point) const override;
    void scrollTo(const QModelIndex&, ScrollHint) override {}
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void layOut();
    void setHovered(const QModelIndex& index);
    QModelIndex said() const;
    double textSize() const;
    double captionHeight() const;

    ChartModel* m_model;
    LaidOutChart m_picture;
    QPersistentModelIndex m_hovered;
    QString m_emptyTitle;
    QString m_emptyText;
};

}  // namespace kpx
