#pragma once

#include "controls/TableView.h"
#include "region/Environment.h"

#include <QAbstractTableModel>

#include <optional>

namespace kpx {

/// Shows a table control's rows. Holds no rows: each cell is asked for when it is drawn.
class RecordTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// `environment` gives the instant and region in which values are shown; both outlive the model.
    RecordTableModel(TableView& table, std::function<Environment()> environment, QObject* parent);

    /// The control changed: its rows, their values or their order.
    void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    const TableView::Column& column(const QModelIndex& index) const;
    QString text(const QModelIndex& index) const;
    bool isRed(const QModelIndex& index) const;
    std::optional<CellGauge> gauge(const QModelIndex& index) const;
    QString toolTip(const QModelIndex& index) const;

    TableView& m_table;
    std::function<Environment()> m_environment;
    Environment m_shown;
    int m_rows = 0;
};

}  // namespace kpx
