#include "ui/charts/ChartModel.h"

#include "ui/Conversions.h"

namespace kpx {

void ChartModel::setChart(const Chart& chart) {
    beginResetModel();
    m_chart = chart;
    endResetModel();
}

QString ChartModel::said(int row) const {
    const ChartBar& bar = m_chart.bars[static_cast<std::size_t>(row)];
    const QString amount = qstring(bar.amountText);
    return bar.label.empty() ? amount : qstring(bar.label) + QStringLiteral(": ") + amount;
}

int ChartModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_chart.bars.size());
}

int ChartModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : 2; }

QVariant ChartModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const ChartBar& bar = m_chart.bars[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
            return qstring(index.column() == 0 ? bar.label : bar.amountText);
        case Qt::ToolTipRole:
        case Qt::AccessibleTextRole:
            // The keys step from bar to bar, so each cell says all of its bar.
            return said(index.row());
        default:
            return {};
    }
}

QVariant ChartModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return qstring(section == 0 ? m_chart.labelTitle : m_chart.amountTitle);
}

}  // namespace kpx
