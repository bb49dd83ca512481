#include "ui/bindings/TableBinding.h"

#include "core/StoredWords.h"
#include "ui/Conversions.h"
#include "ui/Translations.h"
#include "ui/views/CellText.h"
#include "ui/views/FindField.h"
#include "ui/views/GaugeDelegate.h"
#include "ui/views/Reachable.h"
#include "ui/views/RecordTableModel.h"
#include "ui/views/RecordTableView.h"

#include <QHeaderView>
#include <QMenu>
#include <QShortcut>
#include <QSignalBlocker>

#include <memory>
#include <utility>

namespace kpx {

namespace {

/// Of the program's own words in the column, as they are shown. Those much shorter than the longest are not measured:
/// letters that the window does not show are looked up for that in their typeface.
int widestWord(const TableView::Column& column, const QFontMetrics& metrics) {
    QStringList words;
    qsizetype longest = 0;
    for (const std::string& word : storedWords(column.identifier)) {
        words << translated(word);
        longest = qMax(longest, words.constLast().size());
    }
    int widest = 0;
    for (const QString& word : words) {
        if (word.size() * 3 >= longest * 2) {
            widest = qMax(widest, metrics.horizontalAdvance(word));
        }
    }
    return widest;
}

std::vector<RecordTableView::ColumnWidth> usualWidths(const TableView& control, const RecordTableView& widget) {
    const int character = widget.fontMetrics().averageCharWidth();
    std::vector<RecordTableView::ColumnWidth> widths;
    for (const TableView::Column& column : control.columns()) {
        const int title = widget.fontMetrics().horizontalAdvance(translated(column.title)) + 30;
        const int usual =
            qMax(usualCharacters(column.identifier) * character, widestWord(column, widget.fontMetrics())) + 16;
        widths.push_back({qMax(title, usual), isTextColumn(column.identifier)});
    }
    return widths;
}

void refreshRows(const TableView& control, RecordTableView& widget, RecordTableModel& model) {
    const QSignalBlocker noUserAct(widget);
    if (control.numberOfRows() < model.rowCount({})) {
        widget.setCurrentIndex({});  // in place of one that goes the view would choose another
    }
    model.refresh();
}

void showSelection(const TableView& control, RecordTableView& widget) {
    const QSignalBlocker noUserAct(widget);
    const int row = control.selectedRow();
    const int column = qMax(0, widget.currentIndex().column());
    const QModelIndex current = widget.currentIndex();
    if (row < 0) {
        widget.setCurrentIndex({});
        widget.clearSelection();
    } else if (current.row() != row || !widget.selectionModel()->isRowSelected(row)) {
        widget.setCurrentIndex(widget.model()->index(row, column));
    }
}

void showSortOrder(const TableView& control, RecordTableView& widget) {
    if (!control.isSorted()) {
        const QSignalBlocker noUserAct(widget.horizontalHeader());
        widget.horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
        widget.horizontalHeader()->viewport()->update();
        return;
    }
    const SortDescriptor& latest = control.sortDescriptors().front();
    for (int index = 0; index < static_cast<int>(control.columns().size()); ++index) {
        if (control.columns()[static_cast<std::size_t>(index)].identifier == latest.key) {
            const QSignalBlocker noUserAct(widget.horizontalHeader());
            widget.horizontalHeader()->setSortIndicator(index,
                                                        latest.ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
            widget.horizontalHeader()->viewport()->update();
        }
    }
}

}  // namespace

namespace {

void addShortcut(QKeySequence::StandardKey key, RecordTableView& table, const std::function<void()>& act) {
    // Wherever on its tab or sheet the focus is: each has one table.
    auto* shortcut = new QShortcut(key, table.parentWidget());
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, &table, act);
}

/// While text is typed, the search begins anew from the row that was selected when the field opened.
void bindFind(TableView& control, RecordTableView& widget) {
    auto* field = new FindField(&widget);
    auto from = std::make_shared<int>(-1);
    const auto goOn = [&control, field, from](bool forward) {
        field->showFound(control.findAgain && control.findAgain(forward));
        *from = control.selectedRow();
    };
    QObject::connect(field, &QLineEdit::textChanged, field, [&control, field, from](const QString& text) {
        if (isReachable(*field)) {
            field->showFound(text.isEmpty() || (control.find && control.find(utf8(text), *from)));
        }
    });
    QObject::connect(field, &FindField::goOn, field, goOn);
    addShortcut(QKeySequence::Find, widget, [&control, &widget, field, from] {
        if (widget.isVisible()) {
            *from = control.selectedRow();
            field->open();
        }
    });
    addShortcut(QKeySequence::FindNext, widget, [goOn] { goOn(true); });
    addShortcut(QKeySequence::FindPrevious, widget, [goOn] { goOn(false); });
}

}  // namespace

void bind(TableView& control, RecordTableView& widget, std::function<Environment()> environment) {
    auto* model = new RecordTableModel(control, std::move(environment), &widget);
    widget.setModel(model);
    widget.setItemDelegate(new GaugeDelegate(&widget));
    widget.setColumnWidths([&control, &widget] { return usualWidths(control, widget); });
    control.changed = [&control, &widget, model] {
        refreshRows(control, widget, *model);
        showSelection(control, widget);
        showSortOrder(control, widget);
        widget.setStoredRow(control.markedRow());
        widget.setEnabled(control.isEnabled());
        widget.viewport()->update();
    };
    bindFind(control, widget);
    QObject::connect(&widget, &RecordTableView::rowClicked, &widget,
                     [&control](int row) { control.userClickRow(row); });
    QObject::connect(&widget, &RecordTableView::rowDoubleClicked, &widget,
                     [&control](int row) { control.userDoubleClickRow(row); });
    QObject::connect(&widget, &RecordTableView::contextMenuWanted, &widget,
                     [&control, &widget](int row, const QPoint& position) {
                         control.userClickRow(row);
                         const QString name = widget.property("contextMenu").toString();
                         if (auto* menu = name.isEmpty() ? nullptr : widget.window()->findChild<QMenu*>(name)) {
                             menu->popup(position);
                         }
                     });
}

}  // namespace kpx
