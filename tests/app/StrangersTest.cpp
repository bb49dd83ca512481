#include "core/Keys.h"
#include "tests/app/ApplicationUnderTest.h"

#include <gtest/gtest.h>

// Actions sent by controls that have nothing to do with them, and tables that the program does not have.

namespace kpx::test {
namespace {

struct Strangers : testing::Test {
    Strangers() {
        app.controller.applicationDidFinishLaunching();
        app.happened();
    }

    ApplicationUnderTest app;
    KPXAppDelegate& controller = app.controller;
    ControlRegistry elsewhere;
    Button button{elsewhere, "stranger", Place::Tab1};
    PopUpButton popUp{elsewhere, "strangePopUp", Place::Tab1};
    TableView table{elsewhere, "strangeTable", Place::Tab1, {{"patient", "Patient"}}};
    TextField field{elsewhere, "strangeField", Place::Tab1};
};

TEST_F(Strangers, EndTheProgramWhereTheSenderDecidesWhatIsDone) {
    popUp.setItems({std::string("All")});
    popUp.selectLastItem();
    controller.popUpSelectedOnTab1(popUp);
    EXPECT_EQ(app.happened(), "alert [value for whichPopup not found] [Error in popUpSelectedOnTab1:]; terminate");
}

TEST_F(Strangers, HaveNoSheetToOpen) {
    controller.showOneSheet(popUp, Records());
    EXPECT_EQ(app.happened(), "alert [value for whichPopup not found] [Error in showOneSheet:]; terminate");
}

TEST_F(Strangers, HaveNoListToChange) {
    controller.changeBtnOnSheetPressed(button);
    EXPECT_EQ(app.happened(), "alert [value for whichButton not found] [Error in changeBtnOnSheetPressed:]; terminate");
}

TEST_F(Strangers, HaveNoListToDeleteFrom) {
    EXPECT_TRUE(controller.doDeleteFromSheet(button, false));
    EXPECT_EQ(app.happened(), "alert [value for whichButton not found] [Error in doDeleteFromSheet:]; terminate");
}

TEST_F(Strangers, AddNothing) {
    controller.doAddFromSheet(button);
    controller.doAddFromSheet(controller.outlets.deleteBtnDrugSheet);
    controller.doAddFromSheet(controller.outlets.closeBtnDrugSheet);
    EXPECT_EQ(app.happened(), "");
}

TEST_F(Strangers, AreNotTheirListsOtherButtons) {
    for (Button* other : {&controller.outlets.addBtnDrugSheet, &controller.outlets.deleteBtnDrugSheet,
                          &controller.outlets.closeBtnDrugSheet}) {
        controller.changeBtnOnSheetPressed(*other);
        EXPECT_TRUE(app.happened().starts_with("alert [value for whichButton not found]"));
    }
    EXPECT_TRUE(controller.doDeleteFromSheet(controller.outlets.addBtnDrugSheet, false));
}

TEST_F(Strangers, AreTaggedOutAmongThePatientPopUps) {
    controller.patientPopUpSelected(popUp);
    EXPECT_EQ(app.happened(), "alert [Report to Developer] [patientPop not found in patientPopUpSelected:]");
}

TEST_F(Strangers, GetNoNamesOfTheHistory) {
    app.write({Record{{MHPatientKey, "Ann"}}}, prescriptionHistoryFile);
    EXPECT_EQ(controller.copyUniqueNamesFromPrescHistFile(popUp, MHPatientKey), std::vector<std::string>());
    EXPECT_EQ(app.happened(), "log [error in copyArrayWithDrugNamesFromPrescHistFile:]");
    for (PopUpButton* known : {&controller.outlets.patientPopForShowTab1, &controller.outlets.drugNamePopForShowTab1,
                               &controller.outlets.patientPopTab2, &controller.outlets.drugNamePopTab2,
                               &controller.outlets.patientPopTab3, &controller.outlets.drugNamePopTab3,
                               &controller.outlets.patientPopTab4, &controller.outlets.drugNamePopTab4}) {
        EXPECT_EQ(controller.copyUniqueNamesFromPrescHistFile(*known, MHPatientKey), std::vector<std::string>{"Ann"});
    }
    EXPECT_EQ(app.happened(), "");
}

TEST_F(Strangers, TypeWithoutEffect) {
    controller.outlets.deleteBtnTab1.setEnabled(true);
    TextField sheetField(elsewhere, "sheetField", Place::DrugSheet);
    sheetField.setText("12345");
    controller.controlTextDidChange(sheetField);
    EXPECT_TRUE(controller.outlets.deleteBtnTab1.isEnabled()) << "typed on a sheet, not in the form";
    field.setText("abcd");
    controller.controlTextDidChange(field);
    EXPECT_EQ(field.text(), "abcd");
    EXPECT_FALSE(controller.outlets.deleteBtnTab1.isEnabled());
    field.setText("1");
    controller.controlTextDidEndEditing(field);
    EXPECT_EQ(field.text(), "1") << "only the cost is written out";
}

TEST_F(Strangers, AreTablesWithoutRows) {
    EXPECT_EQ(controller.numberOfRowsInTableView(table), 0);
    EXPECT_EQ(std::as_const(controller).tableView(table, "patient", 0), nullptr);
    EXPECT_FALSE(controller.willDisplayCell(table, "nextdate", 0));
    controller.sortDescriptorsDidChange(table);
    controller.respondToTableViewClick(table);
    controller.respondToTableViewDblClickDriver(table);
    EXPECT_EQ(app.happened(), "");
    controller.tableView(table, Value("x"), "patient", 0);
    EXPECT_EQ(app.happened(), "alert [table view not found] [error in tableView:setObjectValue:forTableColumn:row]");
}

TEST_F(Strangers, KnownTablesHaveNoRowsBeyondTheirOwn) {
    controller.maintArrayForTVTab1 = {Record{{"patient", "Ann"}}};
    TableView& history = controller.outlets.tableViewTab1;
    for (const int row : {-1, 1}) {
        EXPECT_EQ(std::as_const(controller).tableView(history, "patient", row), nullptr);
        controller.tableView(history, Value("x"), "patient", row);
    }
    EXPECT_EQ(controller.maintArrayForTVTab1, (Records{Record{{"patient", "Ann"}}}));
    EXPECT_EQ(app.happened(), "");
}

TEST_F(Strangers, ShowNoMenuAndOpenNoTab) {
    Menu menu(elsewhere, "menu", Place::Tab2, {{"One"}, {"Two"}});
    controller.menuNeedsUpdate(menu);
    EXPECT_EQ(menu.items().front().title, "One");
    controller.respondToContextMenuTab2(0);
    controller.respondToContextMenuTab2(2);
    controller.tabView(-1);
    controller.tabView(4);
    EXPECT_EQ(app.happened(), "");
}

TEST_F(Strangers, ThePickerServesNoFieldOfTheirs) {
    controller.togglePopOver(button);
    EXPECT_EQ(controller.outlets.thePopOver.anchor(), &button);
    controller.userPickedFromGraphicalDatePicker();
    EXPECT_EQ(app.happened(), "alert [Please report to Velmora] [Failure in Graphical Date Picker]");
}

}  // namespace
}  // namespace kpx::test
