#pragma once

#include "drawing/Chart.h"

#include <QAbstractTableModel>

namespace kpx {

/// The bars of a chart as the rows of a table: what each stands for, and how much it is.
class ChartModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    const Chart& chart() const { return m_chart; }
    void setChart(const Chart& chart);
    /// The bar in words.
    QString said(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    Chart m_chart;
};

}  // namespace kpx
