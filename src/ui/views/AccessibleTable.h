#pragma once

#include <QAccessibleWidget>
#include <QTableView>

#include <functional>
#include <map>
#include <utility>

namespace kpx {

/// What assistive technology meets in a table, and what its acts bring about.
struct TableActs {
    /// What a cell says.
    std::function<QString(const QModelIndex& cell)> name;
    /// What a click does.
    std::function<void(const QModelIndex& cell)> select;
    /// What a double click does; none for a table in which a click is all.
    std::function<void(const QModelIndex& cell)> press;
    /// What a right click does; none for a table without a menu.
    std::function<void(const QModelIndex& cell)> showMenu;
};

/// A table whose cells can be acted upon as with the mouse: the toolkit's own only select, behind the program's back.
/// Its children are counted as the toolkit counts them when it tells which one has the focus: row by row, the headers
/// being the first row and the first column. Behind them come the widgets that lie in the table.
class AccessibleTable : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    AccessibleTable(QTableView& view, TableActs acts);
    ~AccessibleTable() override;

    void* interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QString text(QAccessible::Text kind) const override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override { return selectedRows().contains(row); }
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

    QTableView& view() const { return m_view; }
    const TableActs& acts() const { return m_acts; }

private:
    QList<QWidget*> widgets() const;

    QTableView& m_view;
    TableActs m_acts;
    /// Made when they are first asked for, by row and column; −1 is a header.
    mutable std::map<std::pair<int, int>, QAccessible::Id> m_cells;
};

}  // namespace kpx
