#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "schedule/DueText.h"

namespace kpx {

void KPXAppDelegate::tabView(int didSelectTabViewItem) {
    if (didSelectTabViewItem < 0 || didSelectTabViewItem > 3) {
        return;
    }
    const std::size_t count = didSelectTabViewItem == 0   ? maintArrayForTVTab1.size()
                              : didSelectTabViewItem == 1 ? maintDueArrayForTV.size()
                                                          : 0;
    putCountOnContent(count, didSelectTabViewItem);
    beginAction();
    const auto history = copyArrayFromDataFile(prescriptionHistoryFile);
    const bool hasHistory = history && !history->empty();
    gateShowControls(didSelectTabViewItem, hasHistory);
    if (didSelectTabViewItem == Outlets::scheduleTab && history) {
        outlets.statusText.setText(dueText(*history, environment(), m_strings));
    }
    if (didSelectTabViewItem != 0 && !hasHistory) {
        noPrescriptionHistoryDataMsg();
    }
}

void KPXAppDelegate::gateShowControls(int tab, bool enable) {
    switch (tab) {
        case 0:
            enableDisableShow(nullptr, nullptr, outlets.patientPopForShowTab1, outlets.drugNamePopForShowTab1,
                              &outlets.prescriberPopTab1, outlets.showBtnTab1, enable);
            outlets.showPrintTableListBtn.setEnabled(enable);
            break;
        case 1:
            enableDisableShow(nullptr, nullptr, outlets.patientPopTab2, outlets.drugNamePopTab2, nullptr,
                              outlets.showBtnTab2, enable);
            break;
        case 2:
            enableDisableShow(&outlets.beginDateTab3, &outlets.endDateTab3, outlets.patientPopTab3,
                              outlets.drugNamePopTab3, nullptr, outlets.showBtnTab3, enable);
            break;
        case 3:
            enableDisableShow(&outlets.beginDateTab4, &outlets.endDateTab4, outlets.patientPopTab4,
                              outlets.drugNamePopTab4, nullptr, outlets.printBtnTab4, enable);
            break;
        default:
            break;
    }
}

void KPXAppDelegate::noPrescriptionHistoryDataMsg() {
    constexpr char paragraph[] = "\r\r";
    doSheetAlert(
        mainWindow,
        formatted("%@%@%@%@%@",
                  {localized("This tab requires data to function and is temporarily unavailable until history "
                             "data is added."),
                   paragraph,
                   localized("At least one Patient, one Prescriber, one Pharmacy and one Drug need to be added "
                             "before Prescription history data can be added"),
                   paragraph,
                   localized("Once Prescription history data is entered on tab one, this tab and other tabs will "
                             "be enabled.")}),
        localized("Warning: No Prescription History Data Found"));
}

}  // namespace kpx
