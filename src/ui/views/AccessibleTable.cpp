#include "ui/views/AccessibleTable.h"

#include "ui/views/Reachable.h"

#include <QHeaderView>
#include <QLineEdit>

namespace kpx {

namespace {

/// A cell, or a header where the row or the column is −1.
class AccessibleCell : public QAccessibleInterface,
                       public QAccessibleTableCellInterface,
                       public QAccessibleActionInterface {
public:
    AccessibleCell(const AccessibleTable& table, int row, int column) : m_table(table), m_row(row), m_column(column) {}

    int row() const { return m_row; }
    int column() const { return m_column; }

    void* interface_cast(QAccessible::InterfaceType type) override {
        switch (type) {
            case QAccessible::TableCellInterface:
                return static_cast<QAccessibleTableCellInterface*>(this);
            case QAccessible::ActionInterface:
                return static_cast<QAccessibleActionInterface*>(this);
            default:
                return nullptr;
        }
    }

    /// Rows go and come; the cell stands for a place in the table.
    bool isValid() const override { return m_row < m_table.rowCount() && m_column < m_table.columnCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_table.window(); }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&view()); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QString text(QAccessible::Text kind) const override {
        if (!isValid()) {
            return {};
        }
        if (kind == QAccessible::Description && isCell()) {
            return index().data(Qt::AccessibleDescriptionRole).toString();
        }
        if (kind != QAccessible::Name) {
            return {};
        }
        if (isCell()) {
            return m_table.acts().name(index());
        }
        if (m_row < 0 && m_column < 0) {
            return {};
        }
        const Qt::Orientation orientation = m_row < 0 ? Qt::Horizontal : Qt::Vertical;
        return view().model()->headerData(m_row < 0 ? m_column : m_row, orientation).toString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        const QWidget* viewport = view().viewport();
        if (isCell()) {
            return view().visualRect(index()).translated(viewport->mapToGlobal(QPoint()));
        }
        const QHeaderView* header = view().horizontalHeader();
        if (m_row >= 0 || m_column < 0 || header->isHidden()) {
            return {};
        }
        return {header->mapToGlobal(QPoint(header->sectionViewportPosition(m_column), 0)),
                QSize(header->sectionSize(m_column), header->height())};
    }
    QAccessible::Role role() const override {
        return isCell() ? QAccessible::Cell : m_row < 0 ? QAccessible::ColumnHeader : QAccessible::RowHeader;
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.disabled = !view().isEnabled();
        if (isCell() && isValid()) {
            state.selectable = true;
            state.focusable = true;
            state.selected = view().selectionModel()->isSelected(index());
            state.focused = view().hasFocus() && view().currentIndex() == index();
            state.offscreen = !view().viewport()->rect().intersects(view().visualRect(index()));
        }
        state.invisible = !view().isVisible() || (!isCell() && rect().isEmpty());
        return state;
    }

    bool isSelected() const override { return isCell() && view().selectionModel()->isSelected(index()); }
    QList<QAccessibleInterface*> columnHeaderCells() const override {
        return isCell() ? QList<QAccessibleInterface*>{m_table.cellAt(-1, m_column)} : QList<QAccessibleInterface*>{};
    }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return m_column; }
    int rowIndex() const override { return m_row; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

    QStringList actionNames() const override {
        if (!isCell()) {
            return isSortable() ? QStringList{pressAction()} : QStringList{};
        }
        QStringList names{toggleAction()};
        if (m_table.acts().press) {
            names += pressAction();
        }
        if (m_table.acts().showMenu) {
            names += showMenuAction();
        }
        return names;
    }
    void doAction(const QString& name) override {
        if (!isValid() || !view().isEnabled() || !isReachable(view())) {
            return;
        }
        if (!isCell()) {
            sort();
        } else if (name == toggleAction()) {
            m_table.acts().select(index());
        } else if (name == pressAction() && m_table.acts().press) {
            m_table.acts().press(index());
        } else if (name == showMenuAction() && m_table.acts().showMenu) {
            m_table.acts().showMenu(index());
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QTableView& view() const { return m_table.view(); }
    bool isCell() const { return m_row >= 0 && m_column >= 0; }
    QModelIndex index() const { return view().model()->index(m_row, m_column); }
    bool isSortable() const { return m_row < 0 && m_column >= 0 && view().isSortingEnabled(); }
    /// As a click on the header does.
    void sort() const {
        QHeaderView* header = view().horizontalHeader();
        if (!isSortable()) {
            return;
        }
        const bool again = header->sortIndicatorSection() == m_column;
        const bool descends = again && header->sortIndicatorOrder() == Qt::AscendingOrder;
        header->setSortIndicator(m_column, descends ? Qt::DescendingOrder : Qt::AscendingOrder);
    }

    const AccessibleTable& m_table;
    int m_row;
    int m_column;
};

}  // namespace

AccessibleTable::AccessibleTable(QTableView& view, TableActs acts)
    : QAccessibleWidget(&view, QAccessible::Table), m_view(view), m_acts(std::move(acts)) {}

AccessibleTable::~AccessibleTable() {
    for (const auto& [place, id] : m_cells) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

void* AccessibleTable::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

int AccessibleTable::rowCount() const { return m_view.model() ? m_view.model()->rowCount() : 0; }

int AccessibleTable::columnCount() const { return m_view.model() ? m_view.model()->columnCount() : 0; }

QList<QWidget*> AccessibleTable::widgets() const {
    QList<QWidget*> found;
    for (auto* field : m_view.findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly)) {
        found += field;
    }
    return found;
}

int AccessibleTable::childCount() const {
    return (rowCount() + 1) * (columnCount() + 1) + static_cast<int>(widgets().size());
}

QAccessibleInterface* AccessibleTable::child(int index) const {
    const int width = columnCount() + 1;
    const int cells = (rowCount() + 1) * width;
    if (index < 0 || index >= childCount()) {
        return nullptr;
    }
    return index < cells ? cellAt(index / width - 1, index % width - 1)
                         : QAccessible::queryAccessibleInterface(widgets().at(index - cells));
}

int AccessibleTable::indexOfChild(const QAccessibleInterface* child) const {
    const int width = columnCount() + 1;
    if (const auto* cell = dynamic_cast<const AccessibleCell*>(child)) {
        return (cell->row() + 1) * width + cell->column() + 1;
    }
    const auto position = widgets().indexOf(static_cast<QWidget*>(child->object()));
    return position < 0 ? -1 : (rowCount() + 1) * width + static_cast<int>(position);
}

QAccessibleInterface* AccessibleTable::childAt(int x, int y) const {
    for (QWidget* field : widgets()) {
        if (field->isVisible() && field->rect().contains(field->mapFromGlobal(QPoint(x, y)))) {
            return QAccessible::queryAccessibleInterface(field);
        }
    }
    const QModelIndex index = m_view.indexAt(m_view.viewport()->mapFromGlobal(QPoint(x, y)));
    return index.isValid() ? cellAt(index.row(), index.column()) : nullptr;
}

QAccessibleInterface* AccessibleTable::focusChild() const {
    const QModelIndex current = m_view.currentIndex();
    return m_view.hasFocus() && current.isValid() ? cellAt(current.row(), current.column())
                                                  : QAccessibleWidget::focusChild();
}

QString AccessibleTable::text(QAccessible::Text kind) const {
    // What the eyes read in the middle of an empty table.
    const QString written = QAccessibleWidget::text(kind);
    if (kind != QAccessible::Description || !written.isEmpty() || rowCount() > 0) {
        return written;
    }
    const QString title = m_view.property("emptyTitle").toString();
    const QString text = m_view.property("emptyText").toString();
    return title.isEmpty() ? text : title + QStringLiteral(". ") + text;
}

QAccessibleInterface* AccessibleTable::cellAt(int row, int column) const {
    if (row >= rowCount() || column >= columnCount()) {
        return nullptr;
    }
    QAccessible::Id& id = m_cells[{row, column}];
    if (id == 0) {
        id = QAccessible::registerAccessibleInterface(new AccessibleCell(*this, row, column));
    }
    return QAccessible::accessibleInterface(id);
}

int AccessibleTable::selectedCellCount() const { return static_cast<int>(selectedCells().size()); }

QList<QAccessibleInterface*> AccessibleTable::selectedCells() const {
    QList<QAccessibleInterface*> cells;
    if (m_view.selectionModel()) {
        for (const QModelIndex& index : m_view.selectionModel()->selectedIndexes()) {
            cells += cellAt(index.row(), index.column());
        }
    }
    return cells;
}

QString AccessibleTable::columnDescription(int column) const {
    return m_view.model() ? m_view.model()->headerData(column, Qt::Horizontal).toString() : QString();
}

QList<int> AccessibleTable::selectedRows() const {
    QList<int> rows;
    if (m_view.selectionModel() && m_view.selectionBehavior() == QAbstractItemView::SelectRows) {
        for (const QModelIndex& index : m_view.selectionModel()->selectedRows()) {
            rows += index.row();
        }
    }
    return rows;
}

bool AccessibleTable::selectRow(int row) {
    const QModelIndex index = m_view.model() ? m_view.model()->index(row, 0) : QModelIndex();
    if (index.isValid() && m_view.isEnabled() && isReachable(m_view)) {
        m_acts.select(index);
    }
    return index.isValid();
}

}  // namespace kpx
