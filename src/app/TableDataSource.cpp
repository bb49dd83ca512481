#include "app/KPXAppDelegate.h"
#include "core/Sorting.h"
#include "core/StoredWords.h"
#include "history/HistoryRecord.h"
#include "lists/ListRecords.h"
#include "schedule/RefillSchedule.h"
#include "schedule/Supply.h"
#include "values/Reordering.h"

#include <algorithm>

namespace kpx {

const Records* KPXAppDelegate::rowsOfTable(const TableView& tableView) const {
    if (&tableView == &outlets.tableViewTab1) {
        return &maintArrayForTVTab1;
    }
    if (&tableView == &outlets.tableViewTab2) {
        return &maintDueArrayForTV;
    }
    if (&tableView == &outlets.tableViewReminders) {
        return &remindersArrayForTV;
    }
    if (&tableView == &outlets.tableViewEarlierStates) {
        return &earlierStatesArrayForTV;
    }
    const ListSheet* list = listWhere([&](const ListSheet& candidate) { return &candidate.table == &tableView; });
    return list ? &list->rows : nullptr;
}

Records* KPXAppDelegate::rowsOfTable(const TableView& tableView) {
    return const_cast<Records*>(std::as_const(*this).rowsOfTable(tableView));
}

int KPXAppDelegate::numberOfRowsInTableView(const TableView& tableView) const {
    const Records* rows = rowsOfTable(tableView);
    return rows ? static_cast<int>(rows->size()) : 0;
}

const Value* KPXAppDelegate::tableView(const TableView& tableView, const std::string& objectValueForTableColumn,
                                       int row) const {
    const Records* rows = rowsOfTable(tableView);
    if (!rows || row < 0 || row >= static_cast<int>(rows->size())) {
        return nullptr;
    }
    return (*rows)[static_cast<std::size_t>(row)].find(objectValueForTableColumn);
}

void KPXAppDelegate::tableView(TableView& tableView, const Value& setObjectValue, const std::string& forTableColumn,
                               int row) {
    Records* rows = rowsOfTable(tableView);
    if (!rows) {
        doSheetAlert(mainWindow, localized("error in tableView:setObjectValue:forTableColumn:row"),
                     localized("table view not found"));
        return;
    }
    if (&tableView == &outlets.tableViewReminders || &tableView == &outlets.tableViewEarlierStates) {
        return;  // what they show is removed or brought back, never changed
    }
    if (row >= 0 && row < static_cast<int>(rows->size())) {
        // What is typed is a word of the user's language, what is kept the one that it stands for.
        const Text* typed = setObjectValue.as<Text>();
        const Value kept = typed ? Value(storedWord(forTableColumn, typed->string(), m_strings)) : setObjectValue;
        (*rows)[static_cast<std::size_t>(row)].set(forTableColumn, kept);
        tableView.redrawRows();
    }
    if (liesInMainWindow(tableView.place())) {
        // Text typed in the main window, like any other.
        outlets.deleteBtnTab1.setEnabled(false);
    }
}

void KPXAppDelegate::sortDescriptorsDidChange(TableView& tableView) {
    if (Records* rows = rowsOfTable(tableView)) {
        const auto order = sortedOrder(*rows, tableView.sortDescriptors(), environment(), m_strings);
        reorder(*rows, order);
        if (&tableView == &outlets.tableViewEarlierStates) {
            reorder(m_earlierStates, order);
        }
        const auto positionNow = [&order](int row) {
            const auto moved = std::ranges::find(order, static_cast<std::size_t>(row));
            return row < 0 ? row : static_cast<int>(moved - order.begin());
        };
        // The selection and the mark stay with their records: Change and Delete act on the selected row.
        tableView.selectRow(positionNow(tableView.selectedRow()));
        tableView.markRow(positionNow(tableView.markedRow()));
    }
    tableView.redrawRows();
}

bool KPXAppDelegate::willDisplayCell(const TableView& tableView, const std::string& forTableColumn, int row) const {
    if (&tableView != &outlets.tableViewTab2 || row < 0 || row >= static_cast<int>(maintDueArrayForTV.size())) {
        return false;
    }
    return isDueCell(maintDueArrayForTV[static_cast<std::size_t>(row)], forTableColumn, m_ports.clock.now());
}

std::optional<CellGauge> KPXAppDelegate::gaugeOfCell(const TableView& tableView, const std::string& forTableColumn,
                                                     int row) const {
    if (&tableView != &outlets.tableViewTab2 || row < 0 || row >= static_cast<int>(maintDueArrayForTV.size()) ||
        forTableColumn != supplyColumn) {
        return std::nullopt;
    }
    const auto supply = supplyOfRow(maintDueArrayForTV[static_cast<std::size_t>(row)], environment());
    return supply ? std::optional(CellGauge{supply->days, supply->left, supplyText(*supply, m_strings)}) : std::nullopt;
}

void KPXAppDelegate::respondToTableViewClick(const TableView& tableView) {
    if (&tableView == &outlets.tableViewTab1) {
        setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, false);
    } else if (&tableView == &outlets.tableViewDrugSheet) {
        setChange(outlets.changeBtnDrugSheet, outlets.deleteBtnDrugSheet, false);
    } else if (&tableView == &outlets.tableViewpharmacySheet) {
        setChange(outlets.changeBtnpharmacySheet, outlets.deleteBtnpharmacySheet, false);
    } else if (&tableView == &outlets.tableViewpatientSheet) {
        setChange(outlets.changeBtnpatientSheet, outlets.deleteBtnpatientSheet, false);
    } else if (&tableView == &outlets.tableViewReminders) {
        outlets.removeReminderBtn.setEnabled(tableView.selectedRow() >= 0);
    }
    // The prescriber sheet's buttons are left as they are; see behaviours.
}

void KPXAppDelegate::populateTableViewArrayFromFileArray(const std::optional<Records>& records,
                                                         Records& toTableViewArray) {
    toTableViewArray.clear();
    if (!records) {
        return;
    }
    if (&toTableViewArray == &maintArrayForTVTab1) {
        populateMaintArray(*records, toTableViewArray, environment());
        return;
    }
    if (const ListSheet* list =
            listWhere([&](const ListSheet& candidate) { return &candidate.rows == &toTableViewArray; })) {
        list->populate(*records, toTableViewArray);
    }
}

std::vector<std::string> KPXAppDelegate::copyColumnTitlesOnTab1() const {
    std::vector<std::string> titles;
    for (const char* identifier : {"patient", "pharmacy", "drugname", "prescriber", "scriptnote", "filltype",
                                   "scriptnum", "remainingrefills", "cost", "dispensedate"}) {
        const auto& columns = outlets.tableViewTab1.columns();
        const auto column = std::ranges::find(columns, identifier, &TableView::Column::identifier);
        titles.push_back(column == columns.end() ? std::string() : localized(column->title));
    }
    return titles;
}

void KPXAppDelegate::setChange(Button& changeBtn, Button& deleteBtn, bool onOff) {
    changeBtn.setEnabled(onOff);
    deleteBtn.setEnabled(onOff);
}

void KPXAppDelegate::enableDisableShow(DateField* beginDate, DateField* endDate, PopUpButton& patientPop,
                                       PopUpButton& drugPop, [[maybe_unused]] PopUpButton* prescriberPop,
                                       Control& showBtn, bool enable) {
    if (beginDate) {
        beginDate->setEnabled(enable);
    }
    if (endDate) {
        endDate->setEnabled(enable);
    }
    patientPop.setEnabled(enable);
    drugPop.setEnabled(enable);
    showBtn.setEnabled(enable);
}

void KPXAppDelegate::putCountOnContent(std::size_t count, int onPane) {
    const bool counted = onPane != 2 && onPane != 3;
    outlets.contentCount.setText(counted ? m_strings.sentence("Display Count: %ld", {std::to_string(count)},
                                                              localized("Display Count") + ": " + std::to_string(count))
                                         : std::string());
}

}  // namespace kpx
