#include "controls/TableView.h"

#include <utility>

namespace kpx {

TableView::TableView(ControlRegistry& registry, std::string_view name, Place place, std::vector<Column> columns)
    : Control(registry, name, place), m_columns(std::move(columns)) {}

int TableView::numberOfRows() const { return dataSource ? dataSource->numberOfRowsInTableView(*this) : 0; }

const Value* TableView::objectValue(const std::string& column, int row) const {
    return dataSource ? dataSource->tableView(*this, column, row) : nullptr;
}

void TableView::selectRow(int row) {
    m_selectedRow = row >= 0 && row < numberOfRows() ? row : -1;
    notify();
}

void TableView::reloadData() {
    m_selectedRow = -1;
    m_clickedRow = -1;
    m_markedRow = -1;
    redrawRows();
}

void TableView::redrawRows() {
    m_sorted = false;
    notify();
}

void TableView::markRow(int row) {
    if (m_markedRow != row) {
        m_markedRow = row;
        notify();
    }
}

void TableView::userClickRow(int row) {
    m_clickedRow = row < numberOfRows() ? row : -1;
    m_markedRow = -1;
    selectRow(m_clickedRow);
    if (action) {
        action();
    }
}

void TableView::userDoubleClickRow(int row) {
    userClickRow(row);
    if (doubleAction) {
        doubleAction();
    }
}

void TableView::userSort(const std::string& column, bool ascending) {
    std::erase_if(m_sortDescriptors, [&](const SortDescriptor& descriptor) { return descriptor.key == column; });
    m_sortDescriptors.insert(m_sortDescriptors.begin(), {column, ascending, Comparison::LocalizedCaseInsensitive});
    if (dataSource) {
        dataSource->sortDescriptorsDidChange(*this);
        m_sorted = true;
        notify();
    }
}

void TableView::userEdit(int row, const std::string& column, const Value& value) {
    if (dataSource) {
        dataSource->tableView(*this, value, column, row);
    }
}

}  // namespace kpx
