#include "app/KPXAppDelegate.h"
#include "core/PopUpTitles.h"

namespace kpx {

void KPXAppDelegate::respondToTableViewDblClickDriver(const TableView& tableView) {
    if (const ListSheet* list = listWhere([&](const ListSheet& candidate) { return &candidate.table == &tableView; })) {
        respondToTVDblClickOnSheet(*list);
    }
}

void KPXAppDelegate::respondToTVDblClickOnSheet(const ListSheet& list) {
    const int clicked = list.table.clickedRow();
    if (clicked < 0 || clicked >= static_cast<int>(list.rows.size())) {
        return;
    }
    const ListKind& kind = list.kind;
    const auto name = list.rows[static_cast<std::size_t>(clicked)].text(kind.nameColumn());
    // Read afresh: the fields get the stored values, also those that the table does not show.
    const Records records = copyArrayFromDataFile(kind.fileName).value_or(Records());
    // A row without a name is no row of the empty name.
    if (const Record* record = name ? copyDictContainingTitle(*name, kind.nameKey, records) : nullptr) {
        fillSheetFromDictInTV(*record, kind.keysByTag, list.sheet, kind.endTag());
    } else {
        doSheetAlert(list.sheet.name(), localized("failed to find corresponding name data in file array"),
                     localized("In respondToTVDblClickOnSheet:(KPXAppDelegate)"));
    }
    setChange(list.changeBtn, list.deleteBtn, true);
}

void KPXAppDelegate::cleanOneSheet(const Sheet& sheet, int endTag) {
    for (Control* control : outlets.controls()) {
        auto* field = dynamic_cast<TextField*>(control);
        if (field && field->place() == sheet.place() && field->tag() >= 1 && field->tag() <= endTag) {
            field->setText({});
        }
    }
}

void KPXAppDelegate::fillSheetFromDictInTV(const Record& record, const std::vector<std::string>& withKeys,
                                           const Sheet& sheet, int maxTag) {
    cleanOneSheet(sheet, maxTag);
    for (Control* control : outlets.controls()) {
        auto* field = dynamic_cast<TextField*>(control);
        if (field && field->place() == sheet.place() && field->tag() >= 1 && field->tag() <= maxTag) {
            const std::string& key = withKeys[static_cast<std::size_t>(field->tag())];
            field->setText(textOfValue(record.find(key)).value_or("").string());
        }
    }
}

}  // namespace kpx
