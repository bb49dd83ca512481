#include "app/KPXAppDelegate.h"

#include "core/Keys.h"
#include "core/StoredWords.h"

#include <algorithm>
#include <utility>

namespace kpx {

namespace {

std::vector<PopUpButton::Item> numbersUpTo(int last) {
    std::vector<PopUpButton::Item> numbers;
    for (int number = 1; number <= last; ++number) {
        numbers.emplace_back(std::to_string(number));
    }
    return numbers;
}

}  // namespace

KPXAppDelegate::KPXAppDelegate(Ports ports, LocalizedStrings texts)
    : m_ports(ports),
      m_strings(std::move(texts)),
      m_listSheets{{
          {drugList(),
           &KPXAppDelegate::doAddFromDrugSheet,
           populateDrugSheetArray,
           outlets.theDrugSheet,
           outlets.drugPopTab1,
           outlets.firstDrugBtn,
           outlets.tableViewDrugSheet,
           drugArrayForTV,
           outlets.addBtnDrugSheet,
           outlets.changeBtnDrugSheet,
           outlets.deleteBtnDrugSheet,
           outlets.closeBtnDrugSheet,
           {&outlets.drugNameDrugSheet, &outlets.drugDescDrugSheet}},
          {patientList(),
           &KPXAppDelegate::doAddFrompatientSheet,
           populatepatientSheetArray,
           outlets.thepatientSheet,
           outlets.patientPopTab1,
           outlets.firstPatientBtn,
           outlets.tableViewpatientSheet,
           patientArrayForTV,
           outlets.addBtnpatientSheet,
           outlets.changeBtnpatientSheet,
           outlets.deleteBtnpatientSheet,
           outlets.closeBtnpatientSheet,
           {&outlets.patientNamepatientSheet, &outlets.patientAddrpatientSheet, &outlets.patientCitypatientSheet,
            &outlets.patientStatePatientSheet, &outlets.patientZIPPatientSheet}},
          {pharmacyList(),
           &KPXAppDelegate::doAddFrompharmacySheet,
           populatepharmacySheetArray,
           outlets.thepharmacySheet,
           outlets.pharmacyPopTab1,
           outlets.firstPharmacyBtn,
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
           &KPXAppDelegate::doAddFromPrescriberSheet,
           populatePrescriberSheetArray,
           outlets.thePrescriberSheet,
           outlets.prescriberPopTab1,
           outlets.firstPrescriberBtn,
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
    fillCostChartSwitch();
    // A form that holds no loaded row has nothing to change or delete.
    setChange(outlets.changeBtnTab1, outlets.deleteBtnTab1, false);
    connectActions();
    connectTextFields();
    connectListSheets();
}

Environment KPXAppDelegate::environment() const { return {m_ports.clock.now(), m_ports.system.region()}; }

void KPXAppDelegate::fillDosagePopUps() {
    const auto fillWithNumbers = [](PopUpButton& popUp, int last) {
        popUp.setItems(numbersUpTo(last));
        popUp.selectItemAtIndex(0);
    };
    const auto fillWithWords = [this](PopUpButton& popUp, std::string_view key) {
        const auto& words = storedWords(key);
        std::vector<PopUpButton::Item> titles(words.size());
        std::ranges::transform(words, titles.begin(), m_strings);
        popUp.setItems(std::move(titles), {words.begin(), words.end()});
        popUp.selectItemAtIndex(0);
    };
    fillWithNumbers(outlets.takeNumberTab1, 12);
    fillWithWords(outlets.drugTypeOrMeasureTab1, MHDrugTypeMeasureKey);
    fillWithNumbers(outlets.everyIntervalTab1, 31);
    fillWithWords(outlets.whenToTakeDrugTab1, MHWhenToTakeDrugKey);
    fillWithWords(outlets.fillTypeTab1, MHFillTypeKey);
}

void KPXAppDelegate::fillCostChartSwitch() {
    std::vector<PopUpButton::Item> titles;
    titles.reserve(costBreakdowns.size());
    for (const CostBreakdown breakdown : costBreakdowns) {
        titles.emplace_back(localized(costBreakdownTitle(breakdown)));
    }
    outlets.costChartKind.setItems(std::move(titles));
    outlets.costChartKind.selectItemAtIndex(0);
    // There is nothing to print before Show found something.
    outlets.printCostChartBtn.setEnabled(false);
}

}  // namespace kpx
