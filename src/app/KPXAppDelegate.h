#pragma once

#include "app/ListSheet.h"
#include "app/Outlets.h"
#include "app/Ports.h"
#include "controls/Alert.h"
#include "core/LocalizedStrings.h"
#include "core/Record.h"
#include "history/InputFields.h"

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

/// The application controller: owns all state, receives every action. One class because the interface
/// names one; a method reads controls, calls a rule of its subsystem's folder, and raises the alert or
/// stores and refreshes.
///
///     Start, preferences, tabs, stop    Start.cpp, Tabs.cpp
///     Data files                        DataFileActions.cpp
///     Alerts                            Alerts.cpp
///     Pop-up lists                      PopUpActions.cpp
///     Tables                            TableDataSource.cpp
///     Tab 1: form, add, change, delete  EntryFormActions.cpp, HistoryActions.cpp, ChangeActions.cpp
///     Tab 1: filter sheet               FilterActions.cpp
///     Tab 2: schedule, reminders        ScheduleActions.cpp, ReminderActions.cpp
///     Tab 3: costs                      CostActions.cpp
///     Tab 4: reports                    ReportActions.cpp
///     Reference lists                   ListActions.cpp, ListTableActions.cpp
///     Receipts                          ReceiptActions.cpp
///     Date pickers, appearance, help    PickerActions.cpp, SupportActions.cpp
///
/// Routines that act and may refuse answer true for refused or failed, false for done.
class KPXAppDelegate : public TableViewDataSource {
public:
    /// The ports outlive the application.
    explicit KPXAppDelegate(Ports ports);

    Outlets outlets;

    // The rows of the tables, the only record data kept in memory; always refilled whole.
    Records maintArrayForTVTab1;
    Records maintDueArrayForTV;
    Records patientArrayForTV;
    Records pharmacyArrayForTV;
    Records drugArrayForTV;
    Records prescriberArrayForTV;

    /// The instant, locale and time zone as they are now.
    Environment environment() const;
    std::string localized(std::string_view text) const { return m_strings(text); }

    // ---- Start, preferences, tabs, stop

    /// The start-up sequence. `launchNotification` is the reminder whose click started the program.
    void applicationDidFinishLaunching(const std::optional<UserNotification>& launchNotification = std::nullopt);
    /// False when the system is too old and the application is on its way out.
    bool doInit();
    void establishDefaultPrefs();
    void setPopupsStartingItem(const std::optional<Records>& drugArray, const std::optional<Records>& pharmacyArray,
                               const std::optional<Records>& patientArray,
                               const std::optional<Records>& prescriberArray,
                               const std::optional<Records>& prescriptionHistArray);
    void setDatePickerDefaults();
    void setDateDefaultsWithBeginDate(DateField& beginDate, DateField& endDate);
    void setPaneBase(PopUpButton& patientPop, const std::optional<Records>& fromArray);
    /// The same with the history read afresh.
    void setPatientPop(PopUpButton& patientPop);
    void setPane1();
    void buildSplashWnd();
    void closeSlpash();
    void tabView(int didSelectTabViewItem);
    void noPrescriptionHistoryDataMsg();
    int getPaneLastUsed() const;
    /// The stored index, truncated to its low eight bits, signed.
    int getLastTabUsedFromPrefs() const;
    void userSetPref();
    void windowWillClose();
    void doQuitHouseKeeping();
    bool applicationShouldTerminateAfterLastWindowClosed() const { return true; }
    void applicationWillTerminate() {}
    /// Whether an application of exactly that name is running.
    bool isAppRunning(std::string_view name) const;
    void getSystemVersion(int& major, int& minor) const;

    // ---- Data files

    /// Null when the platform knows no such folder.
    std::optional<std::filesystem::path> copyDataFolderURL() const;
    /// Null when the file is damaged; see core/DataFiles.h.
    std::optional<Records> copyArrayFromDataFile(std::string_view fileName) const;
    bool writeArray(const std::optional<Records>& array, std::string_view toDataFile) const;
    void showDataFilesInFinder();
    /// The history narrowed by dates, pop-ups and fill type (none for a tab without such a group). Null
    /// when the dates were refused; the user has been told.
    std::optional<Records> copyArrayAndCheckDates(const DateField& beginDate, const DateField& andEndDate,
                                                  const PopUpButton& forPatientPop,
                                                  const PopUpButton& forPrescriptionPop, const Matrix* forPrescripType);
    void writeToFileAndSetPopups(const InputArray& input, std::optional<Records> withArray);

    // ---- Alerts

    /// A one-button message on the window or sheet of that name: the title string is the bold line.
    void doSheetAlert(const std::string& window, const std::string& errorString, const std::string& titleString);
    static Alert copySheetAlertWithErrorString(const std::string& errorString, const std::string& titleString,
                                               const std::string& okBtnTitle, const std::string& canBtnTitle,
                                               const std::string& okBtnToolTip, const std::string& canBtnToolTip);
    static Alert copySheetAlertWithErrorString(const std::string& errorString, const std::string& titleString,
                                               const std::string& firstBtnTitle, const std::string& secondBtnTitle);
    /// Blocks. An empty second title leaves one button.
    int runModalAlert(AlertStyle style, const std::string& messageText, const std::string& informativeText,
                      const std::string& firstButtonTitle, const std::string& secondButtonTitle = {});
    /// The end of a window's alert. Only the delete confirmation carries no context value.
    void calledWhenAlertEnds(int returnCode, const std::optional<std::string>& contextInfo);
    bool alertShowHelp();
    void noReportsSelectedErrorMsg();
    void noDataFoundErrorMsg();

    // ---- Pop-up lists

    void loadThisPopupButton(PopUpButton& popUp, std::vector<std::string> whichArray, bool sepAddDel, bool sepAll);
    void loadAPopUpButtonUsingKey(PopUpButton& popUp, std::string_view whichKey,
                                  const std::optional<Records>& whichArray, bool sepAddDel, bool sepAll);
    std::vector<std::string> copyUniqueNamesFromPrescHistFile(const PopUpButton& popUp, std::string_view whichKey);
    void countArraySetPopUp(PopUpButton& popUp, const std::optional<Records>& whichArray);

    // ---- Tables

    int numberOfRowsInTableView(const TableView& tableView) const override;
    const Value* tableView(const TableView& tableView, const std::string& objectValueForTableColumn,
                           int row) const override;
    void tableView(TableView& tableView, const Value& setObjectValue, const std::string& forTableColumn,
                   int row) override;
    void sortDescriptorsDidChange(TableView& tableView) override;
    bool willDisplayCell(const TableView& tableView, const std::string& forTableColumn, int row) const override;
    void respondToTableViewClick(const TableView& tableView);
    void populateTableViewArrayFromFileArray(const std::optional<Records>& records, Records& toTableViewArray);
    std::vector<std::string> copyColumnTitlesOnTab1() const;
    void setChange(Button& changeBtn, Button& deleteBtn, bool onOff);
    /// The prescriber pop-up is deliberately left alone.
    void enableDisableShow(DateField* beginDate, DateField* endDate, PopUpButton& patientPop, PopUpButton& drugPop,
                           PopUpButton* prescriberPop, Control& showBtn, bool enable);
    void putCountOnContent(std::size_t count, int onPane);

    // ---- Tab 1: form, add, change, delete

    void setFormattersForInputFields();
    void controlTextDidChange(TextField& field);
    void controlTextDidEndEditing(TextField& field);
    void validateDataEntryFields(TextField& field);
    void setFieldFromStringMinusLastCharacter(TextField& field);
    bool inputFieldsSupplied(InputArray& input);
    void cleanTab1DataEntry();
    void processAddToList();
    bool doAddToMaintList();
    void respondToTableViewDblClickTab1();
    void changeMaintFromListAction();
    bool changeMaintFromList();
    bool hasWrongDataBeenChanged(const InputArray& input, const Record& comparingDict);
    void doMaintDeleteDriver();
    void shouldDeletePrescriptionSheet(const std::string& window, const std::string& errorString,
                                       const std::string& titleString);
    bool deleteMaintFromList();

    // ---- Tab 1: pop-ups and filter sheet

    void popUpSelectedOnTab1(const PopUpButton& sender);
    void patientPopUpSelected(const PopUpButton& sender);
    /// The same with the history in hand.
    void patientPopUpSelected(const PopUpButton& sender, const std::optional<Records>& history);
    void showFilterSheetForTab1();
    void respondToShowBtnPane1();
    bool areBeginEndDatesOK(Date beginDate, Date theEndDate);
    std::optional<Records> copyAllPrescripHistDictsForSelectedPatient(const PopUpButton& patientPop,
                                                                      const std::optional<Records>& history) const;

    // ---- Tab 2: schedule, reminders

    void respondToShowBtnPane2();
    void menuNeedsUpdate(Menu& menu);
    void respondToContextMenuTab2(int itemIndex);
    void userNotificationCenter(const UserNotification& didActivateNotification);
    void respondToUserNotification(const UserNotification& notification);

    // ---- Tab 3: costs

    void respondToShowBtnPane3();

    // ---- Tab 4: reports

    void respondToPrintBtnPane4(const Button& sender);
    void processReportPane4(int reportType);
    void reportChkBoxClicked();
    bool areAllCheckBoxesON() const;
    void ExportToTabDelimited() {}

    // ---- Reference lists

    void showOneSheet(const PopUpButton& popUp, const std::optional<Records>& whichFile);
    void displaySheet(Sheet& sheet);
    void doAddFromSheet(const Button& sender);
    void changeBtnOnSheetPressed(Button& sender);
    void doDeleteDriver(Button& sender);
    bool doDeleteFromSheet(Button& sender, bool originFromChangeRequest);
    void sheetCloseBtnPressed(const Button& sender);
    /// True when refused: the user has been told.
    bool addToList(ListSheet& list);
    void respondToTableViewDblClickDriver(const TableView& tableView);
    void respondToTVDblClickOnSheet(ListSheet& list);
    void cleanOneSheet(const Sheet& sheet, int endTag);
    void fillSheetFromDictInTV(const Record& record, const std::vector<std::string>& withKeys, const Sheet& sheet,
                               int maxTag);

    // ---- Receipts

    /// Full path of the receipt attached to the form; none when the form has no receipt.
    const std::optional<std::filesystem::path>& imageFilePathURL() const { return m_imageFilePathURL; }
    void setImageFilePathURL(std::optional<std::filesystem::path> url) { m_imageFilePathURL = std::move(url); }
    /// Whether the target takes the file; lights the button up.
    bool draggingEntered(Control& target, const std::filesystem::path& file);
    void draggingExited(Control& target);
    void performDragOperation(Control& target, const std::filesystem::path& file);
    void concludeDragOperation(Control& target);
    void imageChanged(const std::filesystem::path& url);
    void urlIsNotFoundInHZNsSandbox(const std::filesystem::path& url);
    void addReceiptImageToDict(Record& record) const;
    void buildImageViewAndSetWithURL(const std::optional<std::filesystem::path>& url);
    void removeAction();

    // ---- Date pickers, appearance, help, version check

    void togglePopOver(Control& sender);
    void userPickedFromGraphicalDatePicker();
    void darkModeChanged();
    void myShowHelp();
    void newVersionCheck();
    void doLaunchURL();

private:
    void connectActions();
    void connectTextFields();
    void connectListSheets();
    void fillDosagePopUps();
    Records* rowsOfTable(const TableView& tableView);
    const Records* rowsOfTable(const TableView& tableView) const;
    /// What an internal error ends with: the alert on the main window, then the end of the program.
    void reportInternalErrorAndTerminate(const std::string& messageText, const std::string& operation);
    /// What every change of the history ends with on tab 1: the rows anew, in file order, and their count.
    void rebuildHistoryTable(const std::optional<Records>& history);
    void refreshPatientPopUpForShowTab1(std::vector<std::string> patients);
    /// Switches what a tab shows of its filter; any other tab has none.
    void gateShowControls(int tab, bool enable);
    EntryForm entryForm() const;
    const Control& controlOfFormField(FormField field) const;
    /// The receipt of a tab-1 row becomes the form's; a row without one clears it.
    void restoreReceipt(const Record& row);
    /// The stored record that the selected tab-1 row came from; none when no row is selected.
    std::optional<Record> selectedRecordForSearching() const;

    /// The tab-2 row under the last click; null when there is none.
    const Record* clickedScheduleRow() const;

    // The list that a control belongs to; null when it belongs to none.
    const ListKind* listOfPopUp(const PopUpButton& popUp) const;
    const ListSheet* sheetOfTable(const TableView& tableView) const;
    ListSheet* sheetOfAddButton(const Button& button);
    ListSheet* sheetOfChangeButton(const Button& button);
    ListSheet* sheetOfDeleteButton(const Button& button);

    Ports m_ports;
    LocalizedStrings m_strings;
    std::array<ListSheet, 4> m_listSheets;
    std::optional<std::filesystem::path> m_imageFilePathURL;
};

/// The main window's name where alerts are addressed.
inline constexpr char mainWindow[] = "window";

}  // namespace kpx
