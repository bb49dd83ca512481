#include "app/KPXAppDelegate.h"
#include "history/HistoryPredicates.h"
#include "schedule/RefillSchedule.h"

namespace kpx {

void KPXAppDelegate::showEarlierStates() {
    const auto folder = copyDataFolderURL();
    EarlierStates offered = folder ? earlierStatesOf(*folder, environment(), m_strings) : EarlierStates{};
    m_earlierStates = std::move(offered.states);
    earlierStatesArrayForTV = std::move(offered.rows);
    outlets.tableViewEarlierStates.reloadData();
    outlets.earlierStatesMessage.setText({});
    earlierStateSelected();
    displaySheet(outlets.theEarlierStatesSheet);
}

void KPXAppDelegate::earlierStateSelected() {
    outlets.bringBackBtn.setEnabled(outlets.tableViewEarlierStates.selectedRow() >= 0);
}

void KPXAppDelegate::respondToBringBackBtn() {
    const int selected = outlets.tableViewEarlierStates.selectedRow();
    if (selected < 0 || selected >= static_cast<int>(m_earlierStates.size())) {
        return;
    }
    Alert alert;
    alert.messageText = localized("Bring this earlier state back?");
    alert.informativeText = formatted(
        localized("What it does to the present: %@.\r\rThe present is kept, so that this can be taken back."),
        {earlierStatesArrayForTV[static_cast<std::size_t>(selected)].text("difference").value_or("").string()});
    // Escape presses the first one, as no button has it.
    alert.buttons = {{localized("No"), {}, AlertKey::Return}, {localized("Yes"), {}, AlertKey::None}};
    m_ports.alerts.beginSheet(outlets.theEarlierStatesSheet.name(), alert,
                              [this, state = m_earlierStates[static_cast<std::size_t>(selected)]](int returnCode) {
                                  if (returnCode == alertSecondButtonReturn) {
                                      bringBackState(state);
                                  }
                              },
                              {});
}

void KPXAppDelegate::bringBackState(const EarlierState& state) {
    const auto folder = copyDataFolderURL();
    const BroughtBack outcome = folder ? bringBack(*folder, state, environment()) : BroughtBack::NotAtAll;
    if (outcome == BroughtBack::NotAtAll) {
        outlets.earlierStatesMessage.setText(
            localized("Nothing was brought back, because the present state could not be kept."));
        return;
    }
    forgetChoicesAndFigures();
    showHousehold(getPaneLastUsed());
    showEarlierStates();
    if (outcome == BroughtBack::InPart) {
        outlets.earlierStatesMessage.setText(
            localized("Not all of it could be brought back. Whatever was replaced is kept."));
    }
}

void KPXAppDelegate::forgetChoicesAndFigures() {
    fillDosagePopUps();
    cleanTab1DataEntry();
    setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, false);
    outlets.tableViewTab1.selectRow(-1);
    outlets.filterText.setText({});
    outlets.prescriptoinTypeForShowTab1.selectCellWithTag(scriptTypeAll);
    outlets.radioBtnTab2.selectCellWithTag(static_cast<int>(ScheduleMode::LatestFill));
    maintDueArrayForTV.clear();
    outlets.tableViewTab2.reloadData();
    clearCosts();
    outlets.reportsTab4.setAll(false);
}

void KPXAppDelegate::showUnreadableBar() {
    std::string text;
    for (const HouseholdFile& file : householdFiles()) {
        const auto reading = m_readings.find(file.name);
        if (reading != m_readings.end() && reading->second == DataFile::State::Damaged) {
            text += (text.empty() ? "" : " ") + localized(file.unreadable);
        }
    }
    outlets.unreadableBar.setText(text);
}

}  // namespace kpx
