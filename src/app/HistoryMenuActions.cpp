#include "app/ContextMenus.h"
#include "app/KPXAppDelegate.h"
#include "core/CellText.h"

namespace kpx {

const Record* KPXAppDelegate::clickedHistoryRow() const {
    const int clicked = outlets.tableViewTab1.clickedRow();
    return clicked >= 0 && clicked < static_cast<int>(maintArrayForTVTab1.size())
               ? &maintArrayForTVTab1[static_cast<std::size_t>(clicked)]
               : nullptr;
}

void KPXAppDelegate::updateHistoryMenu() {
    const Record* row = clickedHistoryRow();
    const auto enable = [this](HistoryItem item, bool enabled) {
        outlets.contextMenuTab1.setItemEnabled(static_cast<std::size_t>(item), enabled);
    };
    enable(HistoryItem::Load, row != nullptr);
    enable(HistoryItem::Copy, row != nullptr);
    enable(HistoryItem::ShowReceipt, row && row->contains("receiptdata"));
    enable(HistoryItem::PrintTable, outlets.showPrintTableListBtn.isEnabled());
}

void KPXAppDelegate::respondToHistoryMenu(int itemIndex) {
    const Record* row = clickedHistoryRow();
    switch (static_cast<HistoryItem>(itemIndex)) {
        case HistoryItem::Load:
            respondToTableViewDblClickTab1();
            break;
        case HistoryItem::Copy:
            if (row) {
                copyRow(*row);
            }
            break;
        case HistoryItem::ShowReceipt:
            if (row) {
                showReceiptOfRow(*row);
            }
            break;
        case HistoryItem::PrintTable:
            respondToPrintBtnPane4(outlets.showPrintTableListBtn);
            break;
    }
}

void KPXAppDelegate::copyRow(const Record& row) {
    std::vector<std::string> columns;
    std::vector<std::string> titles;
    for (const TableView::Column& column : outlets.tableViewTab1.columns()) {
        columns.push_back(column.identifier);
        titles.push_back(localized(column.title));
    }
    const Environment here = environment();
    m_ports.clipboard.setText(rowAsText(row, columns, here, m_strings),
                              rowAsTable(row, columns, titles, here, m_strings));
}

}  // namespace kpx
