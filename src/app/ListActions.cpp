#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "lists/ListRecords.h"

#include <utility>

namespace kpx {

namespace {

constexpr char deleteFailed[] = "Delete request failed - not deleted";

}  // namespace

void KPXAppDelegate::openListSheet(const ListSheet& list) {
    auto records = copyArrayFromDataFile(list.kind.fileName);
    if (records) {
        sortByName(list.kind, *records, environment());
    }
    showOneSheet(list.popUp, records);
}

void KPXAppDelegate::showOneSheet(const PopUpButton& popUp, const std::optional<Records>& whichFile) {
    const ListSheet* list = listWhere([&](const ListSheet& candidate) { return &candidate.popUp == &popUp; });
    if (!list) {
        reportInternalErrorAndTerminate("value for whichPopup not found", "showOneSheet:");
        return;
    }
    populateTableViewArrayFromFileArray(whichFile, list->rows);
    list->table.reloadData();
    list->table.doubleAction = [this, list] { respondToTableViewDblClickDriver(list->table); };
    list->table.action = [this, list] { respondToTableViewClick(list->table); };
    setChange(list->changeBtn, list->deleteBtn, false);
    m_ports.clock.callAfter(0, [this, list] { displaySheet(list->sheet); });
    if (&list->sheet == &outlets.theDrugSheet) {
        m_ports.windows.setSmallFont(outlets.drugDescDrugSheet);
    }
}

void KPXAppDelegate::displaySheet(Sheet& sheet) { sheet.setOpen(true); }

void KPXAppDelegate::sheetCloseBtnPressed(const Button& sender) {
    for (Control* control : outlets.controls()) {
        if (auto* sheet = dynamic_cast<Sheet*>(control); sheet && sheet->place() == sender.place()) {
            sheet->setOpen(false);
        }
    }
}

void KPXAppDelegate::doAddFromSheet(const Button& sender) {
    const ListSheet* list = listWhere(
        [&](const ListSheet& candidate) { return &candidate.addBtn == &sender || &candidate.changeBtn == &sender; });
    if (!list) {
        return;
    }
    if (!(this->*list->doAdd)(sender)) {
        cleanOneSheet(list->sheet, list->kind.endTag());
    }
    setChange(list->changeBtn, list->deleteBtn, false);
}

bool KPXAppDelegate::doAddFromDrugSheet(const Button&) {
    const bool refused = addToList(m_listSheets[drugSheet]);
    if (!refused) {
        outlets.drugNamePopForShowTab1.selectLastItem();
    }
    return refused;
}

bool KPXAppDelegate::doAddFrompatientSheet(const Button&) { return addToList(m_listSheets[patientSheet]); }

bool KPXAppDelegate::doAddFrompharmacySheet(const Button&) { return addToList(m_listSheets[pharmacySheet]); }

bool KPXAppDelegate::doAddFromPrescriberSheet(const Button&) { return addToList(m_listSheets[prescriberSheet]); }

bool KPXAppDelegate::addToList(const ListSheet& list) {
    const ListKind& kind = list.kind;
    const auto fields = list.texts();
    std::optional<Records> withoutEntry = std::exchange(m_listBeingChanged, std::nullopt);
    const auto refuse = [&](const std::string& message, const std::string& title) {
        // Of a refused change the removal stays. A failed write is not told, here as below: see behaviours.
        static_cast<void>(writeArray(withoutEntry, kind.fileName));
        doSheetAlert(list.sheet.name(), message, title);
        m_ports.windows.beep();
        return true;
    };
    if (!requiredFieldsSupplied(kind, fields)) {
        return refuse(localized(kind.missingDataMessage), localized(kind.missingDataTitle));
    }
    auto records = withoutEntry ? withoutEntry : copyArrayFromDataFile(kind.fileName);
    if (records && listHolds(kind, *records, fields[1])) {
        return refuse("", localized(kind.duplicateTitle));
    }
    if (records) {
        records->push_back(recordFromFields(kind, fields));
    }
    static_cast<void>(writeArray(records, kind.fileName));  // the sheet shows what was wanted, whatever the disk did

    loadAPopUpButtonUsingKey(list.popUp, kind.nameKey, records, true, false);
    list.popUp.selectItemWithTitle(fields[1]);
    populateTableViewArrayFromFileArray(records, list.rows);
    if (kind.sortedAfterAdd) {
        sortRowsByName(kind, list.rows, environment());
    }
    list.table.reloadData();
    tickFirstSteps();
    return false;
}

void KPXAppDelegate::changeBtnOnSheetPressed(Button& sender) {
    const ListSheet* list = listWhere([&](const ListSheet& candidate) { return &candidate.changeBtn == &sender; });
    if (!list) {
        reportInternalErrorAndTerminate("value for whichButton not found", "changeBtnOnSheetPressed:");
        return;
    }
    const int selected = list->table.selectedRow();
    if (selected < 0 || selected >= static_cast<int>(list->rows.size())) {
        return;
    }
    // A row without a name differs from every text, the empty one included.
    const auto rowName = list->rows[static_cast<std::size_t>(selected)].text(list->kind.nameColumn());
    if (!rowName || list->name() != rowName->string()) {
        const std::string& word = list->kind.kindWord;
        const std::string name = rowName.value_or("").string();
        doSheetAlert(
            list->sheet.name(), localized("Press OK to continue"),
            m_strings.sentence(
                list->kind.nameFixedTitle, {name},
                formatted(localized("The %@ name, \"%@\", cannot be changed but all other %@ fields may be changed"),
                          {word, name, word})));
        return;
    }
    if (!doDeleteFromSheet(sender, true)) {
        doAddFromSheet(sender);
    }
}

void KPXAppDelegate::doDeleteDriver(Button& sender) {
    const bool failed = doDeleteFromSheet(sender, false);
    const ListSheet* list = listWhere([&](const ListSheet& candidate) { return &candidate.deleteBtn == &sender; });
    if (failed && list) {
        doSheetAlert(list->sheet.name(), "", localized(deleteFailed));
    }
}

bool KPXAppDelegate::doDeleteFromSheet(Button& sender, bool originFromChangeRequest) {
    const ListSheet* list = listWhere(
        [&](const ListSheet& candidate) { return &candidate.deleteBtn == &sender || &candidate.changeBtn == &sender; });
    if (!list) {
        reportInternalErrorAndTerminate("value for whichButton not found", "doDeleteFromSheet:");
        return true;
    }
    const ListKind& kind = list->kind;
    const std::string name = list->name();
    auto records = copyArrayFromDataFile(kind.fileName);
    if (!records || !removeRecordNamed(kind, *records, name)) {
        // Nothing of that name: no message, and a change request goes on to add it.
        return false;
    }
    if (&list->sheet == &outlets.theDrugSheet || &list->sheet == &outlets.thepatientSheet) {
        // Also for a drug it is the patient pop-up that is reset: that refills the drug pop-up beside it.
        outlets.patientPopForShowTab1.selectLastItem();
        patientPopUpSelected(outlets.patientPopForShowTab1);
        outlets.patientPopForShowTab1.selectLastItem();
    }
    list->popUp.removeItemWithTitle(name);
    list->popUp.selectItemAtIndex(list->popUp.numberOfItems() < 3 ? 1 : 0);
    tickFirstSteps();
    if (originFromChangeRequest) {
        m_listBeingChanged = records;
    } else {
        static_cast<void>(writeArray(records, kind.fileName, Replacing::Deletion));  // likewise
    }
    sortByName(kind, *records, environment());
    populateTableViewArrayFromFileArray(records, list->rows);
    list->table.reloadData();
    const Records history = copyArrayFromDataFile(prescriptionHistoryFile).value_or(Records());
    if (!originFromChangeRequest && historyUses(kind, history, name)) {
        const ListWarning warning = historyUseWarning(kind, name, m_strings);
        doSheetAlert(list->sheet.name(), warning.message, warning.title);
    }
    list->changeBtn.setEnabled(false);
    sender.setEnabled(false);
    return false;
}

}  // namespace kpx
