#include "ui/views/RecordTableModel.h"

#include "ui/Conversions.h"
#include "ui/Translations.h"
#include "ui/style/Colors.h"
#include "ui/views/CellText.h"
#include "ui/views/GaugeDelegate.h"

#include <QGuiApplication>
#include <QPalette>

#include <utility>

namespace kpx {

RecordTableModel::RecordTableModel(TableView& table, std::function<Environment()> environment, QObject* parent)
    : QAbstractTableModel(parent),
      m_table(table),
      m_environment(std::move(environment)),
      m_shown(m_environment()),
      m_rows(table.numberOfRows()) {}

void RecordTableModel::refresh() {
    m_shown = m_environment();
    const int rows = m_table.numberOfRows();
    // Only the number of rows is the view's business; kept rows keep its scroll position.
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
    if (m_rows > 0) {
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, columnCount() - 1));
    }
}

int RecordTableModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_rows; }

int RecordTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_table.columns().size());
}

const TableView::Column& RecordTableModel::column(const QModelIndex& index) const {
    return m_table.columns()[static_cast<std::size_t>(index.column())];
}

QString RecordTableModel::text(const QModelIndex& index) const {
    const Value* value = m_table.objectValue(column(index).identifier, index.row());
    return value ? cellText(column(index).identifier, *value, m_shown) : QString();
}

bool RecordTableModel::isRed(const QModelIndex& index) const {
    return m_table.dataSource && m_table.dataSource->willDisplayCell(m_table, column(index).identifier, index.row());
}

std::optional<CellGauge> RecordTableModel::gauge(const QModelIndex& index) const {
    return m_table.dataSource ? m_table.dataSource->gaugeOfCell(m_table, column(index).identifier, index.row())
                              : std::nullopt;
}

QString RecordTableModel::toolTip(const QModelIndex& index) const {
    const QString cell =
        isRed(index) ? redCellMeaning(column(index).identifier) + QStringLiteral(": ") + text(index) : text(index);
    const auto shown = gauge(index);
    return shown ? cell + QStringLiteral("\n") + qstring(shown->text) : cell;
}

QVariant RecordTableModel::data(const QModelIndex& index, int role) const {
    switch (role) {
        case Qt::DisplayRole:
            return text(index);
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(cellAlignment(column(index).identifier));
        case Qt::ForegroundRole:
            return isRed(index) ? QVariant(warningRed(QGuiApplication::palette())) : QVariant();
        case Qt::AccessibleTextRole:
            return isRed(index) ? text(index) + QStringLiteral(", ") + redCellMeaning(column(index).identifier)
                                : text(index);
        case Qt::ToolTipRole:
            return toolTip(index);
        case Qt::AccessibleDescriptionRole:
            if (const auto shown = gauge(index)) {
                return qstring(shown->text);
            }
            return {};
        case gaugeRole:
            if (const auto shown = gauge(index)) {
                return shown->left > 0 ? static_cast<double>(shown->left) / static_cast<double>(shown->whole) : 0.0;
            }
            return {};
        default:
            return {};
    }
}

QVariant RecordTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= columnCount()) {
        return {};
    }
    const TableView::Column& described = m_table.columns()[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) {
        return translated(described.title);
    }
    return role == Qt::TextAlignmentRole ? QVariant::fromValue(cellAlignment(described.identifier)) : QVariant();
}

void RecordTableModel::sort(int sortedColumn, Qt::SortOrder order) {
    if (sortedColumn >= 0 && sortedColumn < columnCount()) {
        m_table.userSort(m_table.columns()[static_cast<std::size_t>(sortedColumn)].identifier,
                         order == Qt::AscendingOrder);
    }
}

}  // namespace kpx
