#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "history/RefillAccounting.h"

namespace kpx {

void KPXAppDelegate::processAddToList() {
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
    const std::string fillType = outlets.fillTypeTab1.titleOfSelectedItem().value_or("");
    const auto decision = planAddition(history.value_or(Records()), input, fillType, m_strings);
    if (const auto* refusal = std::get_if<AddRefusal>(&decision)) {
        doSheetAlert(mainWindow, refusal->message, refusal->title);
        m_ports.windows.beep();
        return true;
    }
    const AddPlan& plan = std::get<AddPlan>(decision);
    input.refillsRemaining = plan.refillsRemaining;
    if (plan.initialPosition) {
        setRemainingRefills(*history, *plan.initialPosition, plan.refillsRemaining);
        writeArray(history, prescriptionHistoryFile);
    }
    writeToFileAndSetPopups(input, std::move(history));
    return false;
}

}  // namespace kpx
