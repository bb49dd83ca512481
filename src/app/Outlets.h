#pragma once

#include "controls/Button.h"
#include "controls/ChartView.h"
#include "controls/DateField.h"
#include "controls/Matrix.h"
#include "controls/Panels.h"
#include "controls/PopUpButton.h"
#include "controls/Receipt.h"
#include "controls/Steps.h"
#include "controls/TableView.h"
#include "controls/TextField.h"
#include "region/LocalizedStrings.h"

namespace kpx {

/// Every control of the interface under its own name. The windows bind to them by that name.
struct Outlets : ControlRegistry {
    /// The refill schedule's place among the tabs.
    static constexpr int scheduleTab = 1;
    TabView theTabView{*this, "theTabView", Place::Window, 4};
    Label contentCount{*this, "contentCount", Place::Window};
    Label statusText{*this, "statusText", Place::Window};

    // Tab 1: the entry form.
    PopUpButton patientPopTab1{*this, "patientPopTab1", Place::Tab1};
    PopUpButton pharmacyPopTab1{*this, "pharmacyPopTab1", Place::Tab1};
    PopUpButton drugPopTab1{*this, "drugPopTab1", Place::Tab1};
    PopUpButton prescriberPopTab1{*this, "prescriberPopTab1", Place::Tab1};
    TextField rxNumberTab1{*this, "rxNumberTab1", Place::Tab1};
    PopUpButton fillTypeTab1{*this, "fillTypeTab1", Place::Tab1};
    DateField dispenseDateTab1{*this, "dispenseDateTab1", Place::Tab1};
    Button popOverTriggerTab1DispenseDate{*this, "popOverTriggerTab1DispenseDate", Place::Tab1};
    DateField expirationDateTab1{*this, "expirationDateTab1", Place::Tab1};
    Button popOverTriggerTab1ExpirationDate{*this, "popOverTriggerTab1ExpirationDate", Place::Tab1};
    TextField daysSupply{*this, "daysSupply", Place::Tab1};
    TextField initialRefillsTab1{*this, "initialRefillsTab1", Place::Tab1};
    TextField remainingRefillsTab1{*this, "remainingRefillsTab1", Place::Tab1, 0, false};
    TextField totalCostTab1{*this, "totalCostTab1", Place::Tab1};
    PopUpButton takeNumberTab1{*this, "takeNumberTab1", Place::Tab1};
    PopUpButton drugTypeOrMeasureTab1{*this, "drugTypeOrMeasureTab1", Place::Tab1};
    PopUpButton everyIntervalTab1{*this, "everyIntervalTab1", Place::Tab1};
    PopUpButton whenToTakeDrugTab1{*this, "whenToTakeDrugTab1", Place::Tab1};
    TextField scriptNoteTab1{*this, "scriptNoteTab1", Place::Tab1};
    KPXDropButton dropButton{*this, "dropButton", Place::Tab1};
    Button addBtnTab1{*this, "addBtnTab1", Place::Tab1, "Add"};
    Button changeBtnTab1{*this, "changeBtnTab1", Place::Tab1, "Change"};
    Button deleteBtnTab1{*this, "deleteBtnTab1", Place::Tab1, "Delete"};

    // What can be done with the receipt. The positions are those of ReceiptItem.
    Menu contextMenuReceipt{*this,
                            "contextMenuReceipt",
                            Place::Tab1,
                            {{localizable("Choose…")},
                             {localizable("Paste")},
                             {localizable("Open"), false},
                             {localizable("Show in Folder"), false},
                             {localizable("Remove"), false}}};

    // Tab 1: the history.
    Label filterText{*this, "filterText", Place::Tab1};
    Button allBtnTab1{*this, "allBtnTab1", Place::Tab1, "All"};
    Button filterBtnTab1{*this, "filterBtnTab1", Place::Tab1, "Filter…"};
    Button showPrintTableListBtn{*this, "showPrintTableListBtn", Place::Tab1, "Print Table"};
    TableView tableViewTab1{*this,
                            "tableViewTab1",
                            Place::Tab1,
                            {{"patient", "Patient"},
                             {"drugname", "Drug Name"},
                             {"scriptnum", "Rx No."},
                             {"filltype", "Type"},
                             {"dispensedate", "Dispensed"},
                             {"expiredate", "Expires"},
                             {"dayssupply", "Days Supply"},
                             {"refills", "Refills"},
                             {"remainingrefills", "Remain"},
                             {"cost", "Cost"},
                             {"pharmacy", "Pharmacy"},
                             {"prescriber", "Prescriber"},
                             {"takenumber", "Take"},
                             {"typemeasure", "Form"},
                             {"everinterval", "Every"},
                             {"whentotake", "When"},
                             {"scriptnote", "Note"}}};
    // What leads a new household to its first fill, in place of the table: patient; drug; prescriber and pharmacy;
    // fill.
    Steps firstSteps{*this, "firstSteps", Place::Tab1, 4};
    Button firstPatientBtn{*this, "firstPatientBtn", Place::Tab1, "Patient…"};
    Button firstDrugBtn{*this, "firstDrugBtn", Place::Tab1, "Drug…"};
    Button firstPrescriberBtn{*this, "firstPrescriberBtn", Place::Tab1, "Prescriber…"};
    Button firstPharmacyBtn{*this, "firstPharmacyBtn", Place::Tab1, "Pharmacy…"};
    Button firstFillBtn{*this, "firstFillBtn", Place::Tab1, "Enter the Fill"};
    // What can be done with the row. The positions are those of HistoryItem.
    Menu contextMenuTab1{*this,
                         "contextMenuTab1",
                         Place::Tab1,
                         {{localizable("Load into Form")},
                          {localizable("Copy")},
                          {localizable("Show Receipt"), false},
                          {localizable("Print Table")}}};
    // Calendar buttons of the former filter fields: they follow the appearance and trigger nothing.
    Button popOverTriggerTab1BeginDate{*this, "popOverTriggerTab1BeginDate", Place::Tab1};
    Button popOverTriggerTab1EndDate{*this, "popOverTriggerTab1EndDate", Place::Tab1};

    // Tab 1: the filter sheet.
    Sheet theFilterSheetTab1{*this, "theFilterSheetTab1", Place::FilterSheet};
    PopUpButton patientPopForShowTab1{*this, "patientPopForShowTab1", Place::FilterSheet};
    PopUpButton drugNamePopForShowTab1{*this, "drugNamePopForShowTab1", Place::FilterSheet};
    Matrix prescriptoinTypeForShowTab1{*this,
                                       "prescriptoinTypeForShowTab1",
                                       Place::FilterSheet,
                                       Matrix::Kind::Radio,
                                       {{1, "Initial"}, {2, "Refill"}, {3, "All", true}}};
    DateField beginDateForShowTab1{*this, "beginDateForShowTab1", Place::FilterSheet};
    Button fromDateFilterCalIcon{*this, "fromDateFilterCalIcon", Place::FilterSheet};
    DateField endDateForShowTab1{*this, "endDateForShowTab1", Place::FilterSheet};
    Button toDateFilterCalIcon{*this, "toDateFilterCalIcon", Place::FilterSheet};
    Button showBtnTab1{*this, "showBtnTab1", Place::FilterSheet, "Show"};
    Button closeBtnFilterSheet{*this, "closeBtnFilterSheet", Place::FilterSheet, "Close"};

    // Tab 2: the refill schedule.
    PopUpButton patientPopTab2{*this, "patientPopTab2", Place::Tab2};
    PopUpButton drugNamePopTab2{*this, "drugNamePopTab2", Place::Tab2};
    Matrix radioBtnTab2{
        *this,
        "radioBtnTab2",
        Place::Tab2,
        Matrix::Kind::Radio,
        {{1, "Latest fill of each prescription", true}, {2, "Whole history"}, {3, "Overdue"}, {4, "Expired"}}};
    Button showBtnTab2{*this, "showBtnTab2", Place::Tab2, "Show"};
    TableView tableViewTab2{*this,
                            "tableViewTab2",
                            Place::Tab2,
                            {{"patientTabTwo", "Patient"},
                             {"drugTabTwo", "Drug Name"},
                             {"rxnumTabTwo", "Rx Number"},
                             {"lastdate", "Last Dispensed"},
                             {"nextdate", "Next Fill"},
                             {"expiredateTabTwo", "Expires"}}};
    // Titled anew whenever it opens.
    Menu contextMenuTab2{
        *this,
        "contextMenuTab2",
        Place::Tab2,
        {{"No prescription selected"}, {"Send a reminder to the System Notification Center for this item", false}}};

    // Tab 3: the cost summary. The parts, labor and tax fields are never written.
    PopUpButton patientPopTab3{*this, "patientPopTab3", Place::Tab3};
    PopUpButton drugNamePopTab3{*this, "drugNamePopTab3", Place::Tab3};
    DateField beginDateTab3{*this, "beginDateTab3", Place::Tab3};
    Button popOverTriggerTab3BeginDate{*this, "popOverTriggerTab3BeginDate", Place::Tab3};
    DateField endDateTab3{*this, "endDateTab3", Place::Tab3};
    Button popOverTriggerTab3EndDate{*this, "popOverTriggerTab3EndDate", Place::Tab3};
    Button showBtnTab3{*this, "showBtnTab3", Place::Tab3, "Show"};
    TextField totalCostTab3{*this, "totalCostTab3", Place::Tab3, 0, false};
    TextField avgMonthlyCostTab3{*this, "avgMonthlyCostTab3", Place::Tab3, 0, false};
    TextField howManyDBRecords{*this, "howManyDBRecords", Place::Tab3, 0, false};
    TextField totalPartsCostTab3{*this, "totalPartsCostTab3", Place::Tab3, 0, false};
    TextField totalLaborCostTab3{*this, "totalLaborCostTab3", Place::Tab3, 0, false};
    TextField totalTaxCostTab3{*this, "totalTaxCostTab3", Place::Tab3, 0, false};
    TextField avgMonthlyPartsCostTab3{*this, "avgMonthlyPartsCostTab3", Place::Tab3, 0, false};
    TextField avgMonthlyLaborCostTab3{*this, "avgMonthlyLaborCostTab3", Place::Tab3, 0, false};
    TextField avgMonthlyTaxCostTab3{*this, "avgMonthlyTaxCostTab3", Place::Tab3, 0, false};

    // Tab 3: the costs as a picture.
    PopUpButton costChartKind{*this, "costChartKind", Place::Tab3};
    Button printCostChartBtn{*this, "printCostChartBtn", Place::Tab3, "Print Chart"};
    ChartView costChart{*this, "costChart", Place::Tab3};

    // Tab 4: the reports.
    PopUpButton patientPopTab4{*this, "patientPopTab4", Place::Tab4};
    PopUpButton drugNamePopTab4{*this, "drugNamePopTab4", Place::Tab4};
    DateField beginDateTab4{*this, "beginDateTab4", Place::Tab4};
    Button popOverTriggerTab4BeginDate{*this, "popOverTriggerTab4BeginDate", Place::Tab4};
    DateField endDateTab4{*this, "endDateTab4", Place::Tab4};
    Button popOverTriggerTab4EndDate{*this, "popOverTriggerTab4EndDate", Place::Tab4};
    Matrix reportsTab4{*this,
                       "reportsTab4",
                       Place::Tab4,
                       Matrix::Kind::Checks,
                       {{1, "Prescriptions by patient, active"},
                        {2, "Prescriptions by patient, active or inactive"},
                        {3, "Prescriptions by patient and prescriber"},
                        {4, "Patient list"},
                        {5, "Pharmacy list"},
                        {6, "Drug list"},
                        {7, "Prescriber list"},
                        {10, "All reports"}}};
    Button printBtnTab4{*this, "printBtnTab4", Place::Tab4, "Print"};

    // The drug sheet. The tag of a sheet's field is the position of its key in the list's key order.
    Sheet theDrugSheet{*this, "theDrugSheet", Place::DrugSheet};
    TextField drugNameDrugSheet{*this, "drugNameDrugSheet", Place::DrugSheet, 1};
    TextField drugDescDrugSheet{*this, "drugDescDrugSheet", Place::DrugSheet, 2};
    Button addBtnDrugSheet{*this, "addBtnDrugSheet", Place::DrugSheet, "Add"};
    Button changeBtnDrugSheet{*this, "changeBtnDrugSheet", Place::DrugSheet, "Change"};
    Button deleteBtnDrugSheet{*this, "deleteBtnDrugSheet", Place::DrugSheet, "Delete"};
    Button closeBtnDrugSheet{*this, "closeBtnDrugSheet", Place::DrugSheet, "Close"};
    TableView tableViewDrugSheet{
        *this, "tableViewDrugSheet", Place::DrugSheet, {{"Drugname", "Drug Name"}, {"Drugdesc", "Description"}}};

    // The patient sheet.
    Sheet thepatientSheet{*this, "thepatientSheet", Place::PatientSheet};
    TextField patientNamepatientSheet{*this, "patientNamepatientSheet", Place::PatientSheet, 1};
    TextField patientAddrpatientSheet{*this, "patientAddrpatientSheet", Place::PatientSheet, 2};
    TextField patientCitypatientSheet{*this, "patientCitypatientSheet", Place::PatientSheet, 3};
    TextField patientStatePatientSheet{*this, "patientStatePatientSheet", Place::PatientSheet, 4};
    TextField patientZIPPatientSheet{*this, "patientZIPPatientSheet", Place::PatientSheet, 5};
    Button addBtnpatientSheet{*this, "addBtnpatientSheet", Place::PatientSheet, "Add"};
    Button changeBtnpatientSheet{*this, "changeBtnpatientSheet", Place::PatientSheet, "Change"};
    Button deleteBtnpatientSheet{*this, "deleteBtnpatientSheet", Place::PatientSheet, "Delete"};
    Button closeBtnpatientSheet{*this, "closeBtnpatientSheet", Place::PatientSheet, "Close"};
    TableView tableViewpatientSheet{*this,
                                    "tableViewpatientSheet",
                                    Place::PatientSheet,
                                    {{"patientname", "Name"},
                                     {"patientaddress", "Address"},
                                     {"patientcity", "City"},
                                     {"patientstate", "State/County"},
                                     {"patientpostal", "Postal Code"}}};

    // The pharmacy sheet.
    Sheet thepharmacySheet{*this, "thepharmacySheet", Place::PharmacySheet};
    TextField pharmacyNamepharmacySheet{*this, "pharmacyNamepharmacySheet", Place::PharmacySheet, 1};
    TextField pharmacyAddrpharmacySheet{*this, "pharmacyAddrpharmacySheet", Place::PharmacySheet, 2};
    TextField pharmacyNotepharmacySheet{*this, "pharmacyNotepharmacySheet", Place::PharmacySheet, 3};
    TextField pharmacyEmailpharmacySheet{*this, "pharmacyEmailpharmacySheet", Place::PharmacySheet, 4};
    TextField pharmacyWebPagepharmacySheet{*this, "pharmacyWebPagepharmacySheet", Place::PharmacySheet, 5};
    TextField pharmacyPhonepharmacySheet{*this, "pharmacyPhonepharmacySheet", Place::PharmacySheet, 6};
    Button addBtnpharmacySheet{*this, "addBtnpharmacySheet", Place::PharmacySheet, "Add"};
    Button changeBtnpharmacySheet{*this, "changeBtnpharmacySheet", Place::PharmacySheet, "Change"};
    Button deleteBtnpharmacySheet{*this, "deleteBtnpharmacySheet", Place::PharmacySheet, "Delete"};
    Button closeBtnpharmacySheet{*this, "closeBtnpharmacySheet", Place::PharmacySheet, "Close"};
    TableView tableViewpharmacySheet{
        *this,
        "tableViewpharmacySheet",
        Place::PharmacySheet,
        {{"provname", "Name"}, {"provaddress", "Address"}, {"provnotes", "Notes"}, {"provphone", "Phone"}}};

    // The prescriber sheet.
    Sheet thePrescriberSheet{*this, "thePrescriberSheet", Place::PrescriberSheet};
    TextField prescriberNamePrescriberSheet{*this, "prescriberNamePrescriberSheet", Place::PrescriberSheet, 1};
    TextField prescriberAddrPrescriberSheet{*this, "prescriberAddrPrescriberSheet", Place::PrescriberSheet, 2};
    TextField prescriberPhonePrescriberSheet{*this, "prescriberPhonePrescriberSheet", Place::PrescriberSheet, 3};
    TextField prescriberEmailPrescriberSheet{*this, "prescriberEmailPrescriberSheet", Place::PrescriberSheet, 4};
    TextField prescriberSpecialtyPrescriberSheet{*this, "prescriberSpecialtyPrescriberSheet", Place::PrescriberSheet,
                                                 5};
    Button addBtnPrescriberSheet{*this, "addBtnPrescriberSheet", Place::PrescriberSheet, "Add"};
    Button changeBtnPrescriberSheet{*this, "changeBtnPrescriberSheet", Place::PrescriberSheet, "Change"};
    Button deleteBtnPrescriberSheet{*this, "deleteBtnPrescriberSheet", Place::PrescriberSheet, "Delete"};
    Button closeBtnPrescriberSheet{*this, "closeBtnPrescriberSheet", Place::PrescriberSheet, "Close"};
    TableView tableViewPrescriberSheet{*this,
                                       "tableViewPrescriberSheet",
                                       Place::PrescriberSheet,
                                       {{"prescribername", "Name"},
                                        {"prescriberaddress", "Address"},
                                        {"prescriberspecialty", "Specialty"},
                                        {"prescriberemail", "E-mail"},
                                        {"prescriberphone", "Phone"}}};

    // The scheduled reminders.
    Sheet theRemindersSheet{*this, "theRemindersSheet", Place::RemindersSheet};
    TableView tableViewReminders{*this,
                                 "tableViewReminders",
                                 Place::RemindersSheet,
                                 {{"patient", "Patient"}, {"drug", "Drug Name"}, {"when", "Reminds On"}}};
    Button removeReminderBtn{*this, "removeReminderBtn", Place::RemindersSheet, "Remove"};
    Button closeBtnRemindersSheet{*this, "closeBtnRemindersSheet", Place::RemindersSheet, "Close"};

    // Earlier states.
    Bar unreadableBar{*this, "unreadableBar", Place::Window};
    Button unreadableBarBtn{*this, "unreadableBarBtn", Place::Window, "Earlier States…"};
    Sheet theEarlierStatesSheet{*this, "theEarlierStatesSheet", Place::EarlierStatesSheet};
    TableView tableViewEarlierStates{*this,
                                     "tableViewEarlierStates",
                                     Place::EarlierStatesSheet,
                                     {{"when", "When"},
                                      {"fills", "Fills"},
                                      {"patients", "Patients"},
                                      {"drugs", "Drugs"},
                                      {"pharmacies", "Pharmacies"},
                                      {"prescribers", "Prescribers"},
                                      {"difference", "Difference"}}};
    Label earlierStatesMessage{*this, "earlierStatesMessage", Place::EarlierStatesSheet};
    Button bringBackBtn{*this, "bringBackBtn", Place::EarlierStatesSheet, "Bring Back…"};
    Button closeBtnEarlierStatesSheet{*this, "closeBtnEarlierStatesSheet", Place::EarlierStatesSheet, "Close"};

    // The popovers, shared by their triggers.
    Popover thePopOver{*this, "thePopOver", Place::Window};
    DateField theDatePicker{*this, "theDatePicker", Place::DatePopover};
    Popover receiptPopover{*this, "receiptPopover", Place::Window};
    KPXReceiptView dropView{*this, "dropView", Place::ReceiptPopover};
    Button findReceiptBtn{*this, "findReceiptBtn", Place::ReceiptPopover, "Find It…"};

    // The menus.
    Button earlierStatesMenuItem{*this, "earlierStatesMenuItem", Place::MenuBar, "Earlier States…"};
    Button exportMenuItem{*this, "exportMenuItem", Place::MenuBar, "Export Tab-delimited"};
    Button scheduledRemindersMenuItem{*this, "scheduledRemindersMenuItem", Place::MenuBar, "Scheduled…"};
    PopUpButton standingReminder{*this, "standingReminder", Place::MenuBar};
    Button helpMenuItem{*this, "helpMenuItem", Place::MenuBar, "Help"};
    Button showDataFilesMenuItem{*this, "showDataFilesMenuItem", Place::MenuBar, "Show Data Files in Finder"};
    Button keyboardMenuItem{*this, "keyboardMenuItem", Place::MenuBar, "Keyboard"};
    Button versionCheckMenuItem{*this, "versionCheckMenuItem", Place::MenuBar, "Check for New Version"};
    Button webPageMenuItem{*this, "webPageMenuItem", Place::MenuBar, "Web Page"};
    Button aboutMenuItem{*this, "aboutMenuItem", Place::MenuBar, "About Velmora"};
};

}  // namespace kpx
