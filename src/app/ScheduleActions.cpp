#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "history/HistoryPredicates.h"
#include "schedule/RefillSchedule.h"

namespace kpx {

namespace {

constexpr char noTitle[] = " ";

}  // namespace

void KPXAppDelegate::respondToShowBtnPane2() {
    const int tag = outlets.radioBtnTab2.selectedTag().value_or(0);
    Records history = copyArrayFromDataFile(prescriptionHistoryFile).value_or(Records());
    const auto refusal = scheduleRefusal(outlets.patientPopTab2.titleOfSelectedItem(),
                                         outlets.drugNamePopTab2.titleOfSelectedItem(), history, tag);
    if (refusal) {
        doSheetAlert(mainWindow, localized(*refusal), noTitle);
        return;
    }
    Records kept =
        filteredRecords(std::move(history), copyPredicateString(outlets.patientPopTab2.titleUnlessLastItem(),
                                                                outlets.drugNamePopTab2.titleUnlessLastItem()));
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
