#include "app/KPXAppDelegate.h"
#include "core/Numbers.h"
#include "core/Unicode.h"
#include "history/KPXNumberFormatter.h"

namespace kpx {

namespace {

constexpr std::size_t mostDigits = 3;
constexpr char shownCostPattern[] = "###,###,###.00";

/// The chosen name; none while the pop-up stands on its last item, which opens the list's sheet.
std::optional<std::string> chosenName(const PopUpButton& popUp) {
    return popUp.isLastItemSelected() ? std::nullopt : popUp.titleOfSelectedItem();
}

}  // namespace

void KPXAppDelegate::setFormattersForInputFields() {
    const KPXNumberFormatter formatter("0123456789" + decimalSeparator(environment()), true);
    outlets.totalCostTab1.filter = [this, formatter](const std::string& proposed) {
        const bool accepted = formatter.isPartialStringValid(proposed).accepted;
        if (!accepted) {
            m_ports.windows.beep();
        }
        return accepted;
    };
}

void KPXAppDelegate::controlTextDidChange(TextField& field) {
    if (!liesInMainWindow(field.place())) {
        return;
    }
    // A row can be deleted only as it was loaded.
    outlets.deleteBtnTab1.setEnabled(false);
    validateDataEntryFields(field);
}

void KPXAppDelegate::validateDataEntryFields(TextField& field) {
    if (field.text().empty() || (&field != &outlets.daysSupply && &field != &outlets.initialRefillsTab1)) {
        return;
    }
    if (characterCount(field.text()) > mostDigits || !isItaNumber(field.text())) {
        setFieldFromStringMinusLastCharacter(field);
    }
}

void KPXAppDelegate::setFieldFromStringMinusLastCharacter(TextField& field) {
    field.setText(withoutLastCharacter(field.text()));
    m_ports.windows.beep();
}

void KPXAppDelegate::controlTextDidEndEditing(TextField& field) {
    if (&field != &outlets.totalCostTab1 || field.text().empty()) {
        return;
    }
    const Environment here = environment();
    const double cost = leadingNumber(removingGroupingAndCurrency(field.text(), here));
    field.setText(copyFormatStringForTextField(cost, shownCostPattern, here));
}

EntryForm KPXAppDelegate::entryForm() const {
    return {.patient = chosenName(outlets.patientPopTab1),
            .pharmacy = chosenName(outlets.pharmacyPopTab1),
            .drug = chosenName(outlets.drugPopTab1),
            .prescriber = chosenName(outlets.prescriberPopTab1),
            .rxNumber = outlets.rxNumberTab1.text(),
            .daysSupply = outlets.daysSupply.text(),
            .cost = outlets.totalCostTab1.text(),
            .initialRefills = outlets.initialRefillsTab1.text(),
            .note = outlets.scriptNoteTab1.text(),
            .dispenseDate = outlets.dispenseDateTab1.date(),
            .expirationDate = outlets.expirationDateTab1.date(),
            .takeNumber = outlets.takeNumberTab1.titleOfSelectedItem(),
            .drugTypeOrMeasure = outlets.drugTypeOrMeasureTab1.titleOfSelectedItem(),
            .everyInterval = outlets.everyIntervalTab1.titleOfSelectedItem(),
            .whenToTake = outlets.whenToTakeDrugTab1.titleOfSelectedItem(),
            .fillType = outlets.fillTypeTab1.titleOfSelectedItem()};
}

bool KPXAppDelegate::inputFieldsSupplied(InputArray& input) {
    const auto refusal = kpx::inputFieldsSupplied(entryForm(), input, environment(), m_strings);
    if (!refusal) {
        return false;
    }
    doSheetAlert(mainWindow, refusal->message, refusal->title);
    m_ports.windows.makeFirstResponder(controlOfFormField(refusal->focus));
    m_ports.windows.beep();
    return true;
}

const Control& KPXAppDelegate::controlOfFormField(FormField field) const {
    switch (field) {
        case FormField::Patient:
            return outlets.patientPopTab1;
        case FormField::Pharmacy:
            return outlets.pharmacyPopTab1;
        case FormField::Drug:
            return outlets.drugPopTab1;
        case FormField::Prescriber:
            return outlets.prescriberPopTab1;
        case FormField::RxNumber:
            return outlets.rxNumberTab1;
        case FormField::DaysSupply:
            return outlets.daysSupply;
        case FormField::DispenseDate:
            return outlets.dispenseDateTab1;
        case FormField::ExpirationDate:
            break;
    }
    return outlets.expirationDateTab1;
}

void KPXAppDelegate::cleanTab1DataEntry() {
    for (TextField* field : {&outlets.totalCostTab1, &outlets.rxNumberTab1, &outlets.daysSupply,
                             &outlets.initialRefillsTab1, &outlets.remainingRefillsTab1, &outlets.scriptNoteTab1}) {
        field->setText({});
    }
    setDatePickerDefaults();
    removeAction();
}

}  // namespace kpx
