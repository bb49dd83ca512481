#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "core/Keys.h"
#include "history/HistoryPredicates.h"

namespace kpx {

void KPXAppDelegate::showFilterSheetForTab1() {
    const auto history = copyArrayFromDataFile(prescriptionHistoryFile);
    setDateDefaultsWithBeginDate(outlets.beginDateForShowTab1, outlets.endDateForShowTab1);
    loadAPopUpButtonUsingKey(outlets.patientPopForShowTab1, MHPatientKey, history, false, true);
    outlets.patientPopForShowTab1.selectLastItem();
    loadAPopUpButtonUsingKey(outlets.drugNamePopForShowTab1, MHDrugKey, history, false, true);
    outlets.drugNamePopForShowTab1.selectLastItem();
    m_ports.clock.callAfter(0, [this] { displaySheet(outlets.theFilterSheetTab1); });
}

void KPXAppDelegate::respondToShowBtnPane1() {
    beginAction();
    const auto kept =
        copyArrayAndCheckDates(outlets.beginDateForShowTab1, outlets.endDateForShowTab1, outlets.patientPopForShowTab1,
                               outlets.drugNamePopForShowTab1, &outlets.prescriptoinTypeForShowTab1);
    if (kept) {
        rebuildHistoryTable(kept);
        outlets.filterText.setText(filterText(chosenFilter(), environment(), m_strings));
        if (kept->empty()) {
            noDataFoundErrorMsg();
        }
    }
    setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, false);
}

HistoryFilter KPXAppDelegate::chosenFilter() const {
    const auto titleUnlessAll = [this](const PopUpButton& popUp) {
        const auto title = popUp.titleOfSelectedItem();
        return title == localized("All") ? std::nullopt : title;
    };
    return {.patient = titleUnlessAll(outlets.patientPopForShowTab1),
            .drug = titleUnlessAll(outlets.drugNamePopForShowTab1),
            .scriptType = outlets.prescriptoinTypeForShowTab1.selectedTag().value_or(scriptTypeNone),
            .begin = outlets.beginDateForShowTab1.date(),
            .end = outlets.endDateForShowTab1.date()};
}

void KPXAppDelegate::showAllFills() {
    beginAction();
    const auto history = copyArrayFromDataFile(prescriptionHistoryFile);
    rebuildHistoryTable(history);
    showFirstSteps(history);
    sortNewestFirst();
    outlets.tableViewTab1.redrawRows();
    setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, false);
}

bool KPXAppDelegate::areBeginEndDatesOK(Date beginDate, Date theEndDate) {
    if (beginDate <= theEndDate) {
        return true;
    }
    doSheetAlert(mainWindow, localized("Begin Date must be prior to or equal to End Date. Please adjust dates"),
                 localized("Date Input Error"));
    return false;
}

std::optional<Records> KPXAppDelegate::copyAllPrescripHistDictsForSelectedPatient(
    const PopUpButton& patientPop, const std::optional<Records>& history) const {
    return history ? std::optional(
                         filteredRecords(*history, copyPredicateString(patientPop.titleUnlessLastItem(), std::nullopt)))
                   : std::nullopt;
}

}  // namespace kpx
