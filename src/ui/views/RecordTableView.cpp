#include "ui/views/RecordTableView.h"

#include "ui/views/AccessibleTable.h"
#include "ui/views/EmptyState.h"
#include "ui/views/ReturnKey.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <set>
#include <utility>

namespace kpx {

namespace {

QAccessibleInterface* accessibleTable(const QString&, QObject* object) {
    auto* view = qobject_cast<RecordTableView*>(object);
    return view ? new AccessibleTable(*view, view->acts()) : nullptr;
}

struct ShownColumn {
    int index = 0;
    int width = 0;
};

/// The columns in the order in which they are shown, with their widths; none where the text does not name each of them
/// once. The toolkit's own reader of such states believes all that it reads, and ends with the program.
std::vector<ShownColumn> shownColumns(const QString& text, int count, int narrowest) {
    constexpr int widest = 4000;
    std::vector<ShownColumn> columns;
    std::set<int> named;
    for (const QString& part : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        bool hasIndex = false;
        bool hasWidth = false;
        const ShownColumn column{part.section(QLatin1Char(':'), 0, 0).toInt(&hasIndex),
                                 part.section(QLatin1Char(':'), 1).toInt(&hasWidth)};
        if (!hasIndex || !hasWidth || column.index < 0 || column.index >= count || !named.insert(column.index).second ||
            column.width < narrowest || column.width > widest) {
            return {};
        }
        columns.push_back(column);
    }
    return static_cast<int>(columns.size()) == count ? columns : std::vector<ShownColumn>();
}

}  // namespace

RecordTableView::RecordTableView(QWidget* parent) : QTableView(parent) {
    // A second time changes nothing.
    QAccessible::installFactory(accessibleTable);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);
    setContextMenuPolicy(Qt::DefaultContextMenu);
    setCornerButtonEnabled(false);

    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 12);
    QHeaderView* header = horizontalHeader();
    header->setSectionsMovable(true);
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setMinimumSectionSize(40);
    header->setSortIndicator(-1, Qt::AscendingOrder);
}

TableActs RecordTableView::acts() {
    const auto select = [this](const QModelIndex& cell) {
        if (selectionModel()->isRowSelected(cell.row())) {
            Q_EMIT rowClicked(cell.row());
        }
        setCurrentIndex(cell);
    };
    TableActs acts;
    acts.name = [](const QModelIndex& cell) { return cell.data(Qt::AccessibleTextRole).toString(); };
    acts.select = select;
    acts.press = [this, select](const QModelIndex& cell) {
        select(cell);
        Q_EMIT rowDoubleClicked(cell.row());
    };
    if (property("contextMenu").isValid()) {
        acts.showMenu = [this](const QModelIndex& cell) {
            Q_EMIT contextMenuWanted(cell.row(), viewport()->mapToGlobal(visualRect(cell).bottomLeft()));
        };
    }
    return acts;
}

void RecordTableView::setModel(QAbstractItemModel* model) {
    QTableView::setModel(model);
    setSortingEnabled(true);
}

void RecordTableView::setStoredRow(int row) {
    if (m_storedRow == row) {
        return;
    }
    m_storedRow = row;
    if (row >= 0) {
        scrollTo(model()->index(row, 0));
    }
    viewport()->update();
}

void RecordTableView::setColumnWidths(std::function<std::vector<ColumnWidth>()> widths) {
    m_usualWidths = std::move(widths);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { m_userSetWidths |= !m_fitting; });
}

void RecordTableView::fitColumns() {
    if (m_userSetWidths || !m_usualWidths) {
        return;
    }
    if (m_columnWidths.empty()) {
        m_columnWidths = m_usualWidths();
    }
    int usual = 0;
    int growing = 0;
    for (const ColumnWidth& width : m_columnWidths) {
        usual += width.usual;
        growing += width.mayGrow ? width.usual : 0;
    }
    const int spare = qMax(0, viewport()->width() - usual);
    m_fitting = true;
    for (int index = 0; index < static_cast<int>(m_columnWidths.size()); ++index) {
        const ColumnWidth& width = m_columnWidths[static_cast<std::size_t>(index)];
        const int share = width.mayGrow && growing > 0 ? spare * width.usual / growing : 0;
        horizontalHeader()->resizeSection(index, width.usual + share);
    }
    m_fitting = false;
}

QString RecordTableView::savedColumns() const {
    const QHeaderView& header = *horizontalHeader();
    QStringList columns;
    if (m_userSetWidths || header.sectionsMoved()) {
        for (int place = 0; place < header.count(); ++place) {
            const int column = header.logicalIndex(place);
            columns << QStringLiteral("%1:%2").arg(column).arg(header.sectionSize(column));
        }
    }
    return columns.join(QLatin1Char(' '));
}

void RecordTableView::restoreColumns(const QString& columns) {
    QHeaderView& header = *horizontalHeader();
    const auto shown = shownColumns(columns, header.count(), header.minimumSectionSize());
    m_userSetWidths |= !shown.empty();
    for (int place = 0; place < static_cast<int>(shown.size()); ++place) {
        const ShownColumn& column = shown[static_cast<std::size_t>(place)];
        header.moveSection(header.visualIndex(column.index), place);
        header.resizeSection(column.index, column.width);
    }
}

void RecordTableView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    fitColumns();
}

void RecordTableView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    // The frame too.
    update();
}

void RecordTableView::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    update();
}

void RecordTableView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        setFocus(Qt::MouseFocusReason);
        Q_EMIT rowClicked(indexAt(event->pos()).row());
    } else if (event->button() != Qt::RightButton) {
        QTableView::mousePressEvent(event);
    }
    // A right click comes as the wish for a menu.
}

void RecordTableView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        Q_EMIT rowDoubleClicked(indexAt(event->pos()).row());
    }
}

void RecordTableView::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKey ? currentIndex() : indexAt(viewport()->mapFromGlobal(event->globalPos()));
    const QPoint position = byKey ? viewport()->mapToGlobal(visualRect(index).bottomLeft()) : event->globalPos();
    Q_EMIT contextMenuWanted(index.row(), position);
}

void RecordTableView::keyPressEvent(QKeyEvent* event) {
    if (isReturnKey(*event)) {
        if (currentIndex().isValid()) {
            Q_EMIT rowDoubleClicked(currentIndex().row());
        }
        return;
    }
    QTableView::keyPressEvent(event);
}

void RecordTableView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    const QModelIndexList rows = selectionModel()->selectedRows();
    Q_EMIT rowClicked(rows.isEmpty() ? -1 : rows.constFirst().row());
}

void RecordTableView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (m_storedRow >= 0 && model() && m_storedRow < model()->rowCount()) {
        QPainter painter(viewport());
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(
            QRect(1, rowViewportPosition(m_storedRow) + 1, viewport()->width() - 2, rowHeight(m_storedRow) - 2));
    }
    if (model() && model()->rowCount() == 0 && !m_emptyTitle.isEmpty()) {
        // A window that opens is painted before its files are read: nothing is empty before that.
        if (!std::exchange(m_hasBeenPainted, true)) {
            viewport()->update();
            return;
        }
        QPainter painter(viewport());
        drawEmptyState(painter, viewport()->rect(), palette(), font(), m_emptyTitle, m_emptyText);
    }
}

}  // namespace kpx
