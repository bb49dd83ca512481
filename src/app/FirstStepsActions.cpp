#include "app/KPXAppDelegate.h"

#include <array>

namespace kpx {

void KPXAppDelegate::showFirstSteps(const std::optional<Records>& history) {
    // A damaged history is no empty one.
    outlets.firstSteps.setOpen(history && history->empty());
    tickFirstSteps();
}

void KPXAppDelegate::tickFirstSteps() {
    const auto has = [](const PopUpButton& popUp) { return popUp.hasNames(); };
    const bool patient = has(outlets.patientPopTab1);
    const bool drug = has(outlets.drugPopTab1);
    const bool prescriberAndPharmacy = has(outlets.prescriberPopTab1) && has(outlets.pharmacyPopTab1);
    const bool open = outlets.firstSteps.isOpen();
    outlets.firstSteps.setDone({patient, drug, prescriberAndPharmacy, !open});
    for (Button* button :
         {&outlets.firstPatientBtn, &outlets.firstDrugBtn, &outlets.firstPrescriberBtn, &outlets.firstPharmacyBtn}) {
        button->setEnabled(open);
    }
    outlets.firstFillBtn.setEnabled(open && patient && drug && prescriberAndPharmacy);
}

void KPXAppDelegate::startFirstFill() { m_ports.windows.makeFirstResponder(outlets.rxNumberTab1); }

}  // namespace kpx
