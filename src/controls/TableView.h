#pragma once

#include "controls/Control.h"
#include "core/Record.h"
#include "core/Sorting.h"

#include <optional>
#include <string>
#include <vector>

namespace kpx {

class TableView;

/// Serves a table its rows; one source serves all tables.
class TableViewDataSource {
public:
    virtual ~TableViewDataSource() = default;
    virtual int numberOfRowsInTableView(const TableView& tableView) const = 0;
    /// Null where the row has no value, or the table or row is unknown. Valid until the rows change.
    virtual const Value* tableView(const TableView& tableView, const std::string& objectValueForTableColumn,
                                   int row) const = 0;
    /// Stores an edited value.
    virtual void tableView(TableView& tableView, const Value& setObjectValue, const std::string& forTableColumn,
                           int row) = 0;
    /// The table's sort descriptors changed: sort its rows.
    virtual void sortDescriptorsDidChange(TableView& tableView) = 0;
    /// Whether the cell is drawn in red.
    virtual bool willDisplayCell(const TableView& tableView, const std::string& forTableColumn, int row) const = 0;
};

/// A table. The rows themselves are its data source's; the table knows columns, selection and order.
class TableView : public Control {
public:
    struct Column {
        std::string identifier;
        std::string title;
        /// Whether the user may edit its cells in place.
        bool editable = true;
    };

    TableView(ControlRegistry& registry, std::string_view name, Place place, std::vector<Column> columns);

    /// Set once, before use; must outlive the table's use.
    TableViewDataSource* dataSource = nullptr;

    const std::vector<Column>& columns() const { return m_columns; }
    int numberOfRows() const;
    const Value* objectValue(const std::string& column, int row) const;

    /// −1 when no row is selected.
    int selectedRow() const { return m_selectedRow; }
    void selectRow(int row);
    /// The row under the last click, −1 for below the last row.
    int clickedRow() const { return m_clickedRow; }

    /// Shows the rows anew. The selection stays at its index while there is such a row.
    void reloadData();

    /// First the latest header clicked, then the earlier ones, each column once.
    const std::vector<SortDescriptor>& sortDescriptors() const { return m_sortDescriptors; }
    /// Whether the rows still stand as the sort descriptors say. Rows built anew stand in their own order,
    /// and an arrow in the header would be untrue.
    bool isSorted() const { return m_sorted; }

    /// The user's click selects the row (−1 takes the selection away) and runs the action; a double
    /// click is a click followed by the double action; a right click leaves the selection alone.
    void userClickRow(int row);
    void userDoubleClickRow(int row);
    void userRightClickRow(int row);
    void userSort(const std::string& column, bool ascending);
    void userEdit(int row, const std::string& column, const Value& value);

    std::function<void()> action;
    std::function<void()> doubleAction;

private:
    std::vector<Column> m_columns;
    std::vector<SortDescriptor> m_sortDescriptors;
    bool m_sorted = false;
    int m_selectedRow = -1;
    int m_clickedRow = -1;
};

}  // namespace kpx
