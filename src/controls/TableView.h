#pragma once

#include "controls/Control.h"
#include "core/Sorting.h"
#include "values/Record.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kpx {

class TableView;

/// How much is left of a whole, shown beside a cell's text.
struct CellGauge {
    std::int64_t whole = 0;
    std::int64_t left = 0;  ///< at most the whole; 0 or less when all is gone
    std::string text;       ///< the same in words
};

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
    /// Null for a cell without one.
    virtual std::optional<CellGauge> gaugeOfCell(const TableView& tableView, const std::string& forTableColumn,
                                                 int row) const = 0;
};

/// A table. The rows themselves are its data source's; the table knows columns, selection and order.
class TableView : public Control {
public:
    struct Column {
        std::string identifier;
        std::string title;
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

    /// Shows rows that were built anew. No row is selected then, nor under the last click, nor marked: what
    /// stands at a place now need not be what stood there.
    void reloadData();
    /// Shows the same rows with other values or in another order; the selection is the caller's to keep.
    void redrawRows();

    /// The row just stored, marked until the next action; −1 for none. The interface scrolls it into view.
    int markedRow() const { return m_markedRow; }
    void markRow(int row);

    /// First the latest header clicked, then the earlier ones, each column once.
    const std::vector<SortDescriptor>& sortDescriptors() const { return m_sortDescriptors; }
    /// Whether the rows still stand as the sort descriptors say. Rows built anew stand in their own order,
    /// and an arrow in the header would be untrue.
    bool isSorted() const { return m_sorted; }

    /// The user's click selects the row (−1 takes the selection away) and runs the action. A double click is a
    /// click followed by the double action. Whatever else moves the selection counts as a click: a right click,
    /// a step with the arrow keys, a row found.
    void userClickRow(int row);
    void userDoubleClickRow(int row);
    void userSort(const std::string& column, bool ascending);
    void userEdit(int row, const std::string& column, const Value& value);

    std::function<void()> action;
    std::function<void()> doubleAction;
    /// The user seeks the text from behind the row, or goes on from the selected one; answers whether a row was found.
    std::function<bool(const std::string& text, int from)> find;
    std::function<bool(bool forward)> findAgain;

private:
    std::vector<Column> m_columns;
    std::vector<SortDescriptor> m_sortDescriptors;
    bool m_sorted = false;
    int m_selectedRow = -1;
    int m_clickedRow = -1;
    int m_markedRow = -1;
};

}  // namespace kpx
