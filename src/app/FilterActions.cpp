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
    const auto kept =
        copyArrayAndCheckDates(outlets.beginDateForShowTab1, outlets.endDateForShowTab1, outlets.patientPopForShowTab1,
                               outlets.drugNamePopForShowTab1, &outlets.prescriptoinTypeForShowTab1);
    if (kept) {
        rebuildHistoryTable(kept);
        if (kept->empty()) {
            noDataFoundErrorMsg();
        }
    }
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
    const auto patient = patientPop.isLastItemSelected() ? std::nullopt : patientPop.titleOfSelectedItem();
    return history ? std::optional(filteredRecords(*history, copyPredicateString(patient, std::nullopt)))
                   : std::nullopt;
}

}  // namespace kpx
