#include "core/Keys.h"
#include "tests/app/ApplicationUnderTest.h"

#include <gtest/gtest.h>

#include <fstream>

namespace kpx::test {
namespace {

TEST(Controller, FlushesThePreferencesWhenTheWindowCloses) {
    ApplicationUnderTest app;
    app.controller.applicationDidFinishLaunching();
    app.controller.outlets.theTabView.selectTab(2);
    const auto file = app.home.path() / "config" / "Velmora" / "preferences.json";
    EXPECT_FALSE(std::filesystem::exists(file));
    app.controller.windowWillClose();
    EXPECT_EQ(DefaultsDouble(file).integer("Pane last used when window closed"), 2);
}

TEST(Controller, FlushesThePreferencesWhenAsked) {
    ApplicationUnderTest app;
    app.platform.defaults.setInteger("key", 5);
    app.controller.userSetPref();
    EXPECT_EQ(DefaultsDouble(app.home.path() / "config" / "Velmora" / "preferences.json").integer("key"), 5);
}

TEST(Controller, TakesNoPageForAVersionUnlessItWasFound) {
    struct Row {
        int status;
        bool isVersion;
    };
    for (const Row& row :
         std::vector<Row>{{199, false}, {200, true}, {204, true}, {299, true}, {300, false}, {404, false}}) {
        SCOPED_TRACE(row.status);
        ApplicationUnderTest app;
        app.platform.web.setResponse(WebFetch::Response{row.status, "9.9"});
        app.controller.newVersionCheck();
        EXPECT_EQ(app.happened().find("[Version check failed.]") == std::string::npos, row.isVersion);
    }
}

TEST(Controller, FindsAProgramByItsWholeName) {
    ApplicationUnderTest app;
    app.platform.workspace.setRunningApplications({"Velmora", "Files"});
    EXPECT_TRUE(app.controller.isAppRunning("Files"));
    EXPECT_FALSE(app.controller.isAppRunning("files"));
    EXPECT_FALSE(app.controller.isAppRunning("File"));
}

TEST(Controller, ShowsRemindersAlsoWhileItIsInFront) {
    ApplicationUnderTest app;
    app.controller.applicationDidFinishLaunching();
    ASSERT_TRUE(app.platform.notifications.shouldPresentNotification);
    EXPECT_TRUE(app.platform.notifications.shouldPresentNotification({}));
}

TEST(Controller, HearsOfADroppedReceiptOnceItHasStarted) {
    ApplicationUnderTest app;
    const auto file = app.home.path() / "data" / "Velmora" / "receipt.png";
    Button target(app.controller.outlets, "target", Place::Tab1);
    app.controller.performDragOperation(target, file);
    EXPECT_EQ(app.controller.imageFilePathURL(), std::nullopt);
    app.controller.applicationDidFinishLaunching();
    app.controller.performDragOperation(target, file);
    EXPECT_EQ(app.controller.imageFilePathURL(), file);
}

TEST(Controller, AddsToEachListByItsOwnRoutine) {
    ApplicationUnderTest app;
    app.controller.applicationDidFinishLaunching();
    app.happened();
    Outlets& outlets = app.controller.outlets;
    struct Row {
        bool (KPXAppDelegate::*doAdd)(const Button&);
        const Button& addBtn;
        TextField& name;
        std::string_view file;
        const char* nameKey;
        bool needsAnotherField;
    };
    const std::vector<Row> rows = {
        {&KPXAppDelegate::doAddFromDrugSheet, outlets.addBtnDrugSheet, outlets.drugNameDrugSheet, drugFile, DrugNameKey,
         true},
        {&KPXAppDelegate::doAddFrompatientSheet, outlets.addBtnpatientSheet, outlets.patientNamepatientSheet,
         patientFile, patientNameKey, false},
        {&KPXAppDelegate::doAddFrompharmacySheet, outlets.addBtnpharmacySheet, outlets.pharmacyNamepharmacySheet,
         pharmacyFile, pharmacyNameKey, false},
        {&KPXAppDelegate::doAddFromPrescriberSheet, outlets.addBtnPrescriberSheet,
         outlets.prescriberNamePrescriberSheet, prescriberFile, PrescriberNameKey, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.nameKey);
        EXPECT_TRUE((app.controller.*row.doAdd)(row.addBtn)) << "nothing was entered";
        EXPECT_TRUE(app.happened().ends_with("; beep"));
        row.name.setText("New");
        EXPECT_EQ((app.controller.*row.doAdd)(row.addBtn), row.needsAnotherField);
        outlets.drugDescDrugSheet.setText("tablets");
        EXPECT_EQ((app.controller.*row.doAdd)(row.addBtn), !row.needsAnotherField) << "then it is there already";
        ASSERT_EQ(app.read(row.file).size(), 1U);
        EXPECT_EQ(app.read(row.file).front().text(row.nameKey), Text("New"));
        app.happened();
    }
}

TEST(Controller, BuildsTheRowsOfTheArrayItIsGiven) {
    ApplicationUnderTest app;
    KPXAppDelegate& controller = app.controller;
    struct Row {
        Records& rows;
        const char* key;
        const char* column;
    };
    const std::vector<Row> rows = {{controller.maintArrayForTVTab1, MHPatientKey, "patient"},
                                   {controller.drugArrayForTV, DrugNameKey, "Drugname"},
                                   {controller.patientArrayForTV, patientNameKey, "patientname"},
                                   {controller.pharmacyArrayForTV, pharmacyNameKey, "provname"},
                                   {controller.prescriberArrayForTV, PrescriberNameKey, "prescribername"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.column);
        row.rows = {Record{{"old", "row"}}};
        controller.populateTableViewArrayFromFileArray(Records{Record{{row.key, "x"}}}, row.rows);
        EXPECT_EQ(row.rows, (Records{Record{{row.column, "x"}}}));
        controller.populateTableViewArrayFromFileArray(std::nullopt, row.rows);
        EXPECT_EQ(row.rows, Records()) << "a damaged file has none";
    }
    Records others = {Record{{"old", "row"}}};
    controller.populateTableViewArrayFromFileArray(Records{Record{{MHPatientKey, "x"}}}, others);
    EXPECT_EQ(others, Records());
}

TEST(Controller, ChangesAndDeletesNothingWithoutASelectedRow) {
    const Records history = {Record{{MHPatientKey, "Ann"}, {MHPharmacyKey, "Corner"}, {MHRxNumberKey, "17"}}};
    ApplicationUnderTest app;
    app.controller.applicationDidFinishLaunching();
    app.write(history, prescriptionHistoryFile);
    app.happened();
    TableView& table = app.controller.outlets.tableViewTab1;
    for (const int row : {-1, 0}) {
        SCOPED_TRACE(row);
        table.selectRow(row);
        app.controller.maintArrayForTVTab1.clear();
        app.controller.changeMaintFromListAction();
        EXPECT_TRUE(app.controller.changeMaintFromList());
        EXPECT_TRUE(app.controller.deleteMaintFromList());
        EXPECT_EQ(app.happened(), "");
        EXPECT_EQ(app.read(prescriptionHistoryFile), history);
    }
}

TEST(Controller, TruncatesTheStoredTab) {
    struct Row {
        std::int64_t stored;
        int tab;
    };
    for (const Row& row :
         std::vector<Row>{{0, 0}, {3, 3}, {127, 127}, {128, -128}, {255, -1}, {256, 0}, {259, 3}, {-1, -1}}) {
        SCOPED_TRACE(row.stored);
        ApplicationUnderTest app;
        app.platform.defaults.setInteger("Pane last used when window closed", row.stored);
        EXPECT_EQ(app.controller.getLastTabUsedFromPrefs(), row.tab);
    }
}

TEST(Controller, HasNoFilesWithoutADataFolder) {
    TestPlatform platform({regionOf("en_US", "UTC"), {}, {}}, [](const Json&) {});
    KPXAppDelegate controller(platform.ports());
    EXPECT_EQ(controller.copyDataFolderURL(), std::nullopt);
    EXPECT_EQ(controller.copyArrayFromDataFile(drugFile), Records());
    EXPECT_FALSE(controller.writeArray(Records(), drugFile));
}

}  // namespace
}  // namespace kpx::test
