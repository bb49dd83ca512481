#include "app/KPXAppDelegate.h"
#include "history/KPXNumberFormatter.h"
#include "history/TypedNumber.h"
#include "region/Numbers.h"
#include "values/NumberText.h"
#include "values/Unicode.h"

namespace kpx {

namespace {

constexpr std::size_t mostDigits = 3;

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
    outlets.totalCostTab1.typing = [this](const std::string& before, const std::string& typed) {
        return numberAfterTyping(before, typed, environment().region.hasDecimalComma());
    };
    outlets.daysSupply.typing = outlets.initialRefillsTab1.typing =
        [](const std::string& before, const std::string& typed) { return numberAfterTyping(before, typed, false); };
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
    field.setText(formatShownCost(cost, here));
}

EntryForm KPXAppDelegate::entryForm() const {
    return {.patient = outlets.patientPopTab1.titleUnlessLastItem(),
            .pharmacy = outlets.pharmacyPopTab1.titleUnlessLastItem(),
            .drug = outlets.drugPopTab1.titleUnlessLastItem(),
            .prescriber = outlets.prescriberPopTab1.titleUnlessLastItem(),
            .rxNumber = outlets.rxNumberTab1.text(),
            .daysSupply = outlets.daysSupply.text(),
            .cost = outlets.totalCostTab1.text(),
            .initialRefills = outlets.initialRefillsTab1.text(),
            .note = outlets.scriptNoteTab1.text(),
            .dispenseDate = outlets.dispenseDateTab1.date(),
            .expirationDate = outlets.expirationDateTab1.date(),
            .takeNumber = outlets.takeNumberTab1.representedTextOfSelectedItem(),
            .drugTypeOrMeasure = outlets.drugTypeOrMeasureTab1.representedTextOfSelectedItem(),
            .everyInterval = outlets.everyIntervalTab1.representedTextOfSelectedItem(),
            .whenToTake = outlets.whenToTakeDrugTab1.representedTextOfSelectedItem(),
            .fillType = outlets.fillTypeTab1.representedTextOfSelectedItem()};
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
