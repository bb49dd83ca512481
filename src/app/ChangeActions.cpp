#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "core/Keys.h"
#include "core/StoredWords.h"
#include "history/ChangeAndDelete.h"
#include "history/HistoryRecord.h"
#include "history/StatusText.h"
#include "receipts/Bookmark.h"
#include "region/Numbers.h"

namespace kpx {

namespace {

/// A row's value as the text a field shows; empty when the row lacks it, or holds what is no text and no number.
std::string plainText(const Record& row, std::string_view column) {
    return textOfValue(row.find(column)).value_or("").string();
}

/// Selects what the row holds; a row without the value, or with one that the pop-up lacks, leaves no selection.
void selectValue(PopUpButton& popUp, const Record& row, std::string_view column) {
    popUp.selectItemRepresenting(plainText(row, column));
}

}  // namespace

void KPXAppDelegate::respondToTableViewDblClickTab1() {
    const int clicked = outlets.tableViewTab1.clickedRow();
    if (clicked < 0 || clicked >= static_cast<int>(maintArrayForTVTab1.size())) {
        return;
    }
    const Record row = maintArrayForTVTab1[static_cast<std::size_t>(clicked)];
    selectValue(outlets.patientPopTab1, row, "patient");
    selectValue(outlets.pharmacyPopTab1, row, "pharmacy");
    selectValue(outlets.drugPopTab1, row, "drugname");
    selectValue(outlets.prescriberPopTab1, row, "prescriber");
    outlets.rxNumberTab1.setText(plainText(row, "scriptnum"));
    outlets.initialRefillsTab1.setText(plainText(row, "refills"));
    outlets.remainingRefillsTab1.setText(plainText(row, "remainingrefills"));
    // A row without a note leaves the previous note in the field; see behaviours.
    if (row.contains("scriptnote")) {
        outlets.scriptNoteTab1.setText(plainText(row, "scriptnote"));
    }
    const Value* cost = row.find("cost");
    outlets.totalCostTab1.setText(cost ? formatShownCost(*cost, environment()) : std::string());
    if (const auto date = row.date("dispensedate")) {
        outlets.dispenseDateTab1.setDate(*date);
    }
    if (const auto date = row.date("expiredate")) {
        outlets.expirationDateTab1.setDate(*date);
    }
    outlets.daysSupply.setText(plainText(row, "dayssupply"));
    selectValue(outlets.takeNumberTab1, row, "takenumber");
    selectValue(outlets.drugTypeOrMeasureTab1, row, "typemeasure");
    selectValue(outlets.everyIntervalTab1, row, "everinterval");
    selectValue(outlets.whenToTakeDrugTab1, row, "whentotake");
    selectValue(outlets.fillTypeTab1, row, "filltype");
    restoreReceipt(row);
    setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, true);
    m_ports.windows.unfold(outlets.changeBtnTab1);
}

std::optional<Record> KPXAppDelegate::selectedRecordForSearching() const {
    const int selected = outlets.tableViewTab1.selectedRow();
    if (selected < 0 || selected >= static_cast<int>(maintArrayForTVTab1.size())) {
        return std::nullopt;
    }
    return copyDictForSearchingDataFileArray(maintArrayForTVTab1[static_cast<std::size_t>(selected)], environment());
}

void KPXAppDelegate::changeMaintFromListAction() {
    beginAction();
    const auto selected = selectedRecordForSearching();
    if (!selected) {
        return;
    }
    const std::string rowFillType = selected->text(MHFillTypeKey).value_or("").string();
    const std::string formFillType = outlets.fillTypeTab1.representedTextOfSelectedItem().value_or("");
    if (rowFillType != formFillType) {
        doSheetAlert(mainWindow, localized("The prescription has NOT been changed. Please try again"),
                     formatted(localized("Cannot change an existing prescription's FILL TYPE from \"%@\" to \"%@\""),
                               {shownWord(MHFillTypeKey, rowFillType, m_strings),
                                shownWord(MHFillTypeKey, formFillType, m_strings)}));
        return;
    }
    if (!changeMaintFromList()) {
        cleanTab1DataEntry();
        setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, false);
    }
}

bool KPXAppDelegate::changeMaintFromList() {
    const auto searched = selectedRecordForSearching();
    if (!searched) {
        return true;
    }
    Records history = copyArrayFromDataFile(prescriptionHistoryFile).value_or(Records());
    const auto position = copyFilterArrayAndRetain(history, *searched);
    InputArray input;
    if (inputFieldsSupplied(input)) {
        return true;
    }
    if (!position) {
        doSheetAlert(mainWindow, localized("Possible data issue in changeMaintFromList:"), localized("Change failed"));
        return true;
    }
    const Record& stored = history[*position];
    input.refillsRemaining = stored.integer(MHRefillsRemainKey);
    if (hasWrongDataBeenChanged(input, stored)) {
        return true;
    }
    const EntryForm form = entryForm();
    Record changed = copyDictFromInputFieldsArray(input, form, environment());
    keepUnchosenDosage(form, stored, changed);
    addReceiptImageToDict(changed);
    keepUntouchedReceipt(stored, changed);
    changed.set(MHNoteKey, form.note);
    history[*position] = changed;
    const bool written = writeArray(history, prescriptionHistoryFile);
    rebuildHistoryTable(history);
    if (written) {
        showStoredFill(*position,
                       changedText(input.rxNumber, form.fillType.value_or(""), input.refillsRemaining, m_strings));
    }
    return false;
}

bool KPXAppDelegate::hasWrongDataBeenChanged(const InputArray& input, const Record& comparingDict) {
    if (!kpx::hasWrongDataBeenChanged(input, comparingDict)) {
        return false;
    }
    doSheetAlert(
        mainWindow,
        localized("None of above-mentioned prescription fields can be changed when refills already exist because it "
                  "would break data integrity.\r\r") +
            localized("After dismissing this dialog, please start the change process again by double-clicking the same "
                      "item in the list."),
        localized("Patient, Pharmacy, Drug, Prescriber, 'Rx Number', 'Days Supply' or 'Initial Refills' data fields "
                  "cannot be changed."));
    return true;
}

void KPXAppDelegate::doMaintDeleteDriver() {
    beginAction();
    shouldDeletePrescriptionSheet(
        mainWindow,
        formatted(
            "%@\n\n%@\n\n%@",
            {localized("Click the 'Yes' button to delete this prescription and all its related refill prescriptions "
                       "or 'No' to skip."),
             localized("Clicking the '?' button shows KPX Help. Inside KPX Help, look in the "
                       "'Entering/Viewing/Deleting Prescriptions' section for more explanations"),
             localized("N.B. There is no 'undo' for this operation")}),
        localized("Delete this prescription and all its related refill prescriptions?"));
}

void KPXAppDelegate::shouldDeletePrescriptionSheet(const std::string& window, const std::string& errorString,
                                                   const std::string& titleString) {
    Alert alert;
    alert.messageText = titleString;
    alert.informativeText = errorString;
    alert.style = AlertStyle::Critical;
    alert.showsHelp = true;
    alert.buttons = {{localized("No"), {}, AlertKey::None}, {localized("Yes"), {}, AlertKey::None}};
    m_ports.alerts.beginSheet(
        window, alert, [this](int returnCode) { calledWhenAlertEnds(returnCode, std::nullopt); },
        [this] { alertShowHelp(); });
}

bool KPXAppDelegate::deleteMaintFromList() {
    const auto searched = selectedRecordForSearching();
    if (!searched) {
        return true;
    }
    auto history = copyArrayFromDataFile(prescriptionHistoryFile);
    const auto group = history ? copyFilterBasedOnRxPharmPatient(*history, *searched) : Records();
    if (history) {
        const auto positions = positionsOfGroup(*history, group);
        if (!positions) {
            doSheetAlert(mainWindow, localized("index in 'deleteMaintFromList:'  not found"),
                         localized("Delete failure"));
            return true;
        }
        removePositions(*history, *positions);
    }
    const bool written = writeArray(history, prescriptionHistoryFile, Replacing::Deletion);

    enableDisableShow(nullptr, nullptr, outlets.patientPopForShowTab1, outlets.drugNamePopForShowTab1,
                      &outlets.prescriberPopTab1, outlets.drugNamePopForShowTab1,
                      showControlsEnabledAfterDelete(history ? history->size() : 0));
    rebuildHistoryTable(history);
    showFirstSteps(history);
    setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, false);
    refreshPatientPopUpForShowTab1(copyUniqueNamesFromPrescHistFile(outlets.patientPopForShowTab1, MHPatientKey));
    setPatientPop(outlets.patientPopTab2);
    setPatientPop(outlets.patientPopTab3);
    setPatientPop(outlets.patientPopTab4);
    if (written && !group.empty()) {
        outlets.statusText.setText(
            deletedText(searched->text(MHRxNumberKey).value_or("").string(), group.size(), m_strings));
    }
    return false;
}

}  // namespace kpx
