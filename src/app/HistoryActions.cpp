#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "history/RefillAccounting.h"
#include "history/StatusText.h"

namespace kpx {

void KPXAppDelegate::processAddToList() {
    beginAction();
    if (!doAddToMaintList()) {
        cleanTab1DataEntry();
    }
    setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, false);
}

bool KPXAppDelegate::doAddToMaintList() {
    InputArray input;
    if (inputFieldsSupplied(input)) {
        return true;
    }
    auto history = copyArrayFromDataFile(prescriptionHistoryFile);
    const std::string fillType = outlets.fillTypeTab1.representedTextOfSelectedItem().value_or("");
    const auto decision = planAddition(history.value_or(Records()), input, fillType, m_strings);
    if (const auto* refusal = std::get_if<AddRefusal>(&decision)) {
        doSheetAlert(mainWindow, refusal->message, refusal->title);
        m_ports.windows.beep();
        return true;
    }
    const AddPlan& plan = std::get<AddPlan>(decision);
    input.refillsRemaining = plan.refillsRemaining;
    if (plan.initialPosition) {
        // Written together with the refill: no kill and no full disk comes between the two.
        setRemainingRefills(*history, *plan.initialPosition, plan.refillsRemaining);
    }
    if (writeToFileAndSetPopups(input, std::move(history))) {
        showStoredFill(maintArrayForTVTab1.size() - 1,
                       addedText(input.rxNumber, fillType, input.refillsRemaining, m_strings));
    }
    return false;
}

void KPXAppDelegate::beginAction() {
    outlets.statusText.setText({});
    outlets.tableViewTab1.markRow(-1);
}

void KPXAppDelegate::showStoredFill(std::size_t position, const std::string& status) {
    outlets.tableViewTab1.markRow(static_cast<int>(position));
    outlets.statusText.setText(status);
}

}  // namespace kpx
