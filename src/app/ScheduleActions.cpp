#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "history/HistoryPredicates.h"
#include "schedule/RefillSchedule.h"

namespace kpx {

namespace {

constexpr char noTitle[] = " ";

std::optional<std::string> titleUnlessAll(const PopUpButton& popUp) {
    return popUp.isLastItemSelected() ? std::nullopt : popUp.titleOfSelectedItem();
}

}  // namespace

void KPXAppDelegate::respondToShowBtnPane2() {
    const int tag = outlets.radioBtnTab2.selectedTag().value_or(0);
    if (outlets.patientPopTab2.titleOfSelectedItem().value_or("").empty()) {
        doSheetAlert(mainWindow,
                     localized("No Patient Selected. Please select a Patient or if no patients, please add a patient "
                               "first. "),
                     noTitle);
        return;
    }
    if (outlets.drugNamePopTab2.titleOfSelectedItem().value_or("").empty()) {
        doSheetAlert(mainWindow,
                     localized("No Drug Selected. Please select a Drug or if no Drugs, please add a Drug first."),
                     noTitle);
        return;
    }
    Records history = copyArrayFromDataFile(prescriptionHistoryFile).value_or(Records());
    if (history.empty()) {
        doSheetAlert(mainWindow, localized("There is no prescription maintenance history to show"), noTitle);
        return;
    }
    if (tag < static_cast<int>(ScheduleMode::LatestFill) || tag > static_cast<int>(ScheduleMode::Expired)) {
        doSheetAlert(mainWindow, localized("Invalid 'case' in respondToShowBtnPane2: Contact the developer"), noTitle);
        return;
    }
    Records kept = filteredRecords(std::move(history), copyPredicateString(titleUnlessAll(outlets.patientPopTab2),
                                                                           titleUnlessAll(outlets.drugNamePopTab2)));
    const Environment here = environment();
    applyScheduleMode(kept, static_cast<ScheduleMode>(tag), here);
    maintDueArrayForTV = copyMaintDueArrayForTVFromFilteredArray(kept, here);
    outlets.tableViewTab2.reloadData();
    putCountOnContent(maintDueArrayForTV.size(), 1);
    if (kept.empty()) {
        doSheetAlert(mainWindow, localized("No Prescriptions match the filtering criteria"), noTitle);
    }
}

}  // namespace kpx
