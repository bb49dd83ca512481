#include "app/KPXAppDelegate.h"
#include "core/Sorting.h"
#include "history/HistoryRecord.h"
#include "lists/ListRecords.h"
#include "schedule/RefillSchedule.h"

#include <algorithm>

namespace kpx {

const Records* KPXAppDelegate::rowsOfTable(const TableView& tableView) const {
    if (&tableView == &outlets.tableViewTab1) {
        return &maintArrayForTVTab1;
    }
    if (&tableView == &outlets.tableViewTab2) {
        return &maintDueArrayForTV;
    }
    const ListSheet* sheet = sheetOfTable(tableView);
    return sheet ? &sheet->rows : nullptr;
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
    if (row >= 0 && row < static_cast<int>(rows->size())) {
        (*rows)[static_cast<std::size_t>(row)].set(forTableColumn, setObjectValue);
        tableView.reloadData();
    }
}

void KPXAppDelegate::sortDescriptorsDidChange(TableView& tableView) {
    if (Records* rows = rowsOfTable(tableView)) {
        const auto order = sortedOrder(*rows, tableView.sortDescriptors(), environment());
        Records sorted;
        sorted.reserve(rows->size());
        for (const std::size_t position : order) {
            sorted.push_back(std::move((*rows)[position]));
        }
        *rows = std::move(sorted);
        // The selection stays with its record: Change and Delete act on the selected row.
        const int selected = tableView.selectedRow();
        if (selected >= 0) {
            const auto moved = std::ranges::find(order, static_cast<std::size_t>(selected));
            tableView.selectRow(static_cast<int>(moved - order.begin()));
        }
    }
    tableView.reloadData();
}

bool KPXAppDelegate::willDisplayCell(const TableView& tableView, const std::string& forTableColumn, int row) const {
    if (&tableView != &outlets.tableViewTab2 || row < 0 || row >= static_cast<int>(maintDueArrayForTV.size())) {
        return false;
    }
    return isDueCell(maintDueArrayForTV[static_cast<std::size_t>(row)], forTableColumn, m_ports.clock.now());
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
    }
    // The prescriber sheet's buttons are deliberately left as they are.
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
    for (const ListSheet& sheet : m_listSheets) {
        if (&toTableViewArray == &sheet.rows) {
            populateSheetArray(sheet.kind, *records, toTableViewArray);
        }
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
    outlets.contentCount.setText(
        counted ? formatted("%@%@%ld", {localized("Display Count"), ": ", std::to_string(count)}) : std::string());
}

}  // namespace kpx
