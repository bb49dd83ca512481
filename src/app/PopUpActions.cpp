#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "core/Keys.h"
#include "core/PopUpTitles.h"
#include "region/Collation.h"

#include <algorithm>
#include <array>

namespace kpx {

void KPXAppDelegate::loadThisPopupButton(PopUpButton& popUp, std::vector<std::string> whichArray, bool sepAddDel,
                                         bool sepAll) {
    sortArray(whichArray, environment());
    std::vector<PopUpButton::Item> items(whichArray.begin(), whichArray.end());
    if (sepAddDel) {
        items.emplace_back(std::nullopt);
        if (const ListSheet* list = listWhere([&](const ListSheet& candidate) { return &candidate.popUp == &popUp; })) {
            items.emplace_back(localized(list->kind.maintainTitle));
        }
    }
    if (sepAll) {
        items.emplace_back(std::nullopt);
        items.emplace_back(localized("All"));
    }
    popUp.setItems(std::move(items));
}

void KPXAppDelegate::loadAPopUpButtonUsingKey(PopUpButton& popUp, std::string_view whichKey,
                                              const std::optional<Records>& whichArray, bool sepAddDel, bool sepAll) {
    loadThisPopupButton(popUp, whichArray ? copyUniqueKey(whichKey, *whichArray) : std::vector<std::string>(),
                        sepAddDel, sepAll);
}

std::vector<std::string> KPXAppDelegate::copyUniqueNamesFromPrescHistFile(const PopUpButton& popUp,
                                                                          std::string_view whichKey) {
    const std::array<const PopUpButton*, 8> showPopUps = {
        &outlets.patientPopForShowTab1, &outlets.drugNamePopForShowTab1, &outlets.patientPopTab2,
        &outlets.drugNamePopTab2,       &outlets.patientPopTab3,         &outlets.drugNamePopTab3,
        &outlets.patientPopTab4,        &outlets.drugNamePopTab4};
    if (std::ranges::find(showPopUps, &popUp) == showPopUps.end()) {
        m_ports.windows.log("error in copyArrayWithDrugNamesFromPrescHistFile:");
        return {};
    }
    return copyUniqueKey(whichKey, copyArrayFromDataFile(prescriptionHistoryFile).value_or(Records()));
}

void KPXAppDelegate::countArraySetPopUp(PopUpButton& popUp, const std::optional<Records>& whichArray) {
    if (whichArray && !whichArray->empty()) {
        popUp.selectItemAtIndex(0);
    } else {
        popUp.selectLastItem();
    }
}

void KPXAppDelegate::popUpSelectedOnTab1(const PopUpButton& sender) {
    const ListSheet* list = listWhere([&](const ListSheet& candidate) { return &candidate.popUp == &sender; });
    if (!list) {
        reportInternalErrorAndTerminate("value for whichPopup not found", "popUpSelectedOnTab1:");
        return;
    }
    if (sender.isLastItemSelected()) {
        openListSheet(*list);
    }
}

void KPXAppDelegate::patientPopUpSelected(const PopUpButton& sender) {
    patientPopUpSelected(sender, copyArrayFromDataFile(prescriptionHistoryFile));
}

void KPXAppDelegate::patientPopUpSelected(const PopUpButton& sender, const std::optional<Records>& history) {
    const std::array<std::pair<const PopUpButton*, PopUpButton*>, 4> pairs = {{
        {&outlets.patientPopForShowTab1, &outlets.drugNamePopForShowTab1},
        {&outlets.patientPopTab2, &outlets.drugNamePopTab2},
        {&outlets.patientPopTab3, &outlets.drugNamePopTab3},
        {&outlets.patientPopTab4, &outlets.drugNamePopTab4},
    }};
    const auto pair = std::ranges::find(pairs, &sender, [](const auto& candidate) { return candidate.first; });
    if (pair == pairs.end()) {
        doSheetAlert(mainWindow, localized("patientPop not found in patientPopUpSelected:"),
                     localized("Report to Developer"));
        return;
    }
    PopUpButton& drugPop = *pair->second;
    loadAPopUpButtonUsingKey(drugPop, MHDrugKey, copyAllPrescripHistDictsForSelectedPatient(sender, history), false,
                             true);
    drugPop.selectLastItem();
    drugPop.setEnabled(true);
}

}  // namespace kpx
