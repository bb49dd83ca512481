#include "app/KPXAppDelegate.h"

#include "app/DosageChoices.h"

#include <algorithm>

namespace kpx {

KPXAppDelegate::KPXAppDelegate(Ports ports)
    : m_ports(ports),
      m_listSheets{{
          {drugList(),
           outlets.theDrugSheet,
           outlets.drugPopTab1,
           outlets.tableViewDrugSheet,
           drugArrayForTV,
           outlets.addBtnDrugSheet,
           outlets.changeBtnDrugSheet,
           outlets.deleteBtnDrugSheet,
           outlets.closeBtnDrugSheet,
           {&outlets.drugNameDrugSheet, &outlets.drugDescDrugSheet}},
          {patientList(),
           outlets.thepatientSheet,
           outlets.patientPopTab1,
           outlets.tableViewpatientSheet,
           patientArrayForTV,
           outlets.addBtnpatientSheet,
           outlets.changeBtnpatientSheet,
           outlets.deleteBtnpatientSheet,
           outlets.closeBtnpatientSheet,
           {&outlets.patientNamepatientSheet, &outlets.patientAddrpatientSheet, &outlets.patientCitypatientSheet,
            &outlets.patientStatePatientSheet, &outlets.patientZIPPatientSheet}},
          {pharmacyList(),
           outlets.thepharmacySheet,
           outlets.pharmacyPopTab1,
           outlets.tableViewpharmacySheet,
           pharmacyArrayForTV,
           outlets.addBtnpharmacySheet,
           outlets.changeBtnpharmacySheet,
           outlets.deleteBtnpharmacySheet,
           outlets.closeBtnpharmacySheet,
           {&outlets.pharmacyNamepharmacySheet, &outlets.pharmacyAddrpharmacySheet, &outlets.pharmacyNotepharmacySheet,
            &outlets.pharmacyEmailpharmacySheet, &outlets.pharmacyWebPagepharmacySheet,
            &outlets.pharmacyPhonepharmacySheet}},
          {prescriberList(),
           outlets.thePrescriberSheet,
           outlets.prescriberPopTab1,
           outlets.tableViewPrescriberSheet,
           prescriberArrayForTV,
           outlets.addBtnPrescriberSheet,
           outlets.changeBtnPrescriberSheet,
           outlets.deleteBtnPrescriberSheet,
           outlets.closeBtnPrescriberSheet,
           {&outlets.prescriberNamePrescriberSheet, &outlets.prescriberAddrPrescriberSheet,
            &outlets.prescriberPhonePrescriberSheet, &outlets.prescriberEmailPrescriberSheet,
            &outlets.prescriberSpecialtyPrescriberSheet}},
      }} {
    fillDosagePopUps();
    // A form that holds no loaded row has nothing to change or delete.
    setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, false);
    connectActions();
    connectTextFields();
    connectListSheets();
}

Environment KPXAppDelegate::environment() const { return {m_ports.clock.now(), m_ports.system.region()}; }

void KPXAppDelegate::fillDosagePopUps() {
    const auto fill = [](PopUpButton& popUp, const std::vector<std::string>& titles) {
        popUp.setItems({titles.begin(), titles.end()});
        popUp.selectItemAtIndex(0);
    };
    fill(outlets.takeNumberTab1, numbersUpTo(12));
    fill(outlets.drugTypeOrMeasureTab1, dosageForms());
    fill(outlets.everyIntervalTab1, numbersUpTo(31));
    fill(outlets.whenToTakeDrugTab1, timesToTake());
    fill(outlets.fillTypeTab1, fillTypes());
}

const ListKind* KPXAppDelegate::listOfPopUp(const PopUpButton& popUp) const {
    const auto sheet =
        std::ranges::find_if(m_listSheets, [&](const ListSheet& candidate) { return &candidate.popUp == &popUp; });
    return sheet == m_listSheets.end() ? nullptr : &sheet->kind;
}

const ListSheet* KPXAppDelegate::sheetOfTable(const TableView& tableView) const {
    const auto sheet =
        std::ranges::find_if(m_listSheets, [&](const ListSheet& candidate) { return &candidate.table == &tableView; });
    return sheet == m_listSheets.end() ? nullptr : &*sheet;
}

ListSheet* KPXAppDelegate::sheetOfAddButton(const Button& button) {
    const auto sheet =
        std::ranges::find_if(m_listSheets, [&](const ListSheet& candidate) { return &candidate.addBtn == &button; });
    return sheet == m_listSheets.end() ? nullptr : &*sheet;
}

ListSheet* KPXAppDelegate::sheetOfChangeButton(const Button& button) {
    const auto sheet =
        std::ranges::find_if(m_listSheets, [&](const ListSheet& candidate) { return &candidate.changeBtn == &button; });
    return sheet == m_listSheets.end() ? nullptr : &*sheet;
}

ListSheet* KPXAppDelegate::sheetOfDeleteButton(const Button& button) {
    const auto sheet =
        std::ranges::find_if(m_listSheets, [&](const ListSheet& candidate) { return &candidate.deleteBtn == &button; });
    return sheet == m_listSheets.end() ? nullptr : &*sheet;
}

}  // namespace kpx
