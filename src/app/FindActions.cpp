#include "app/KPXAppDelegate.h"

namespace kpx {

std::optional<int> KPXAppDelegate::findInTable(TableView& table, const std::string& text, int from,
                                               SearchDirection direction) {
    m_soughtText[&table] = text;
    const Records* rows = rowsOfTable(table);
    if (!rows) {
        return std::nullopt;
    }
    std::vector<std::string> columns;
    for (const TableView::Column& column : table.columns()) {
        columns.push_back(column.identifier);
    }
    const auto row = nextRowHolding(text, *rows, columns, from, direction, environment(), m_strings);
    if (row) {
        table.userClickRow(*row);
    }
    return row;
}

std::optional<int> KPXAppDelegate::findAgain(TableView& table, SearchDirection direction) {
    return findInTable(table, m_soughtText[&table], table.selectedRow(), direction);
}

}  // namespace kpx
