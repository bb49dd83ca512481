#pragma once

#include "app/ListSheet.h"
#include "app/Outlets.h"
#include "app/Ports.h"
#include "controls/Alert.h"
#include "controls/NotificationCenter.h"
#include "core/DataFiles.h"
#include "core/RowSearch.h"
#include "costs/CostChart.h"
#include "earlier/KeepingWriter.h"
#include "earlier/Overview.h"
#include "files/FileDescriptor.h"
#include "history/FilterText.h"
#include "history/InputFields.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

/// The application controller: owns all state, receives every action. One class because the interface
/// names one; a method reads controls, calls a rule of its subsystem's folder, and raises the alert or
/// stores and refreshes.
///
///     Start, preferences, tabs, stop       Start.cpp, Tabs.cpp; Connections.cpp: which control runs what
///     Data files                           DataFileActions.cpp
///     Earlier states                       EarlierStatesActions.cpp
///     Alerts                               Alerts.cpp
///     Pop-up lists                         PopUpActions.cpp
///     Tables                               TableDataSource.cpp, FindActions.cpp
///     Tab 1: form, add, change, delete     EntryFormActions.cpp, HistoryActions.cpp, ChangeActions.cpp
///     Tab 1: filter sheet, row's menu      FilterActions.cpp, HistoryMenuActions.cpp
///     Tab 1: first steps                   FirstStepsActions.cpp
///     Tab 2: schedule, reminders           ScheduleActions.cpp, ReminderActions.cpp
///     Scheduled and standing reminders     RemindersSheetActions.cpp
///     Tab 3: costs                         CostActions.cpp
///     Tab 4: reports                       ReportActions.cpp
///     Reference lists                      ListActions.cpp, ListTableActions.cpp
///     Receipts                             ReceiptActions.cpp, ReceiptMenuActions.cpp
///     Date pickers                         PickerActions.cpp
///     Appearance, help, version check      SupportActions.cpp
///
/// Routines that act and may refuse answer true for refused or failed, false for done.
class KPXAppDelegate : public TableViewDataSource {
public:
    /// The ports outlive the application. Without texts it speaks English.
    explicit KPXAppDelegate(Ports ports, LocalizedStrings texts = {});

    Outlets outlets;

    // The rows of the tables, the only record data kept in memory; always refilled whole.
    Records maintArrayForTVTab1;
    Records maintDueArrayForTV;
    Records patientArrayForTV;
    Records pharmacyArrayForTV;
    Records drugArrayForTV;
    Records prescriberArrayForTV;
    Records remindersArrayForTV;
    Records earlierStatesArrayForTV;

    /// The instant, locale and time zone as they are now.
    Environment environment() const;
    std::string localized(std::string_view text) const { return m_strings(text); }

    // ---- Start, preferences, tabs, stop

    /// Holds the data folder, if there is one yet, for as long as the application lives; false when another
    /// program holds it. Then nothing else of this application may be used but dataFolderInUseMsg(). Comes before
    /// the start-up sequence, which makes the folder and holds it where it was missing.
    bool claimDataFolder();
    void dataFolderInUseMsg();
    /// The start-up sequence. `launchNotification` is the reminder whose click started the program.
    void applicationDidFinishLaunching(const std::optional<UserNotification>& launchNotification = std::nullopt);
    /// False when the system is too old and the application is on its way out.
    bool doInit();
    void establishDefaultPrefs();
    void setPopupsStartingItem(const std::optional<Records>& drugArray, const std::optional<Records>& pharmacyArray,
                               const std::optional<Records>& patientArray,
                               const std::optional<Records>& prescriberArray,
                               const std::optional<Records>& prescriptionHistArray);
    /// The window as the files say: rows, pop-ups, counts, dates, the tab with its gating.
    void showHousehold(int selectedTab);
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
    /// What has been stored goes to the disk.
    void userSetPref();
    void windowWillClose();
    void doQuitHouseKeeping();
    // For scripts; the program itself never asks: the window's side ends with its window.
    bool applicationShouldTerminateAfterLastWindowClosed() const { return true; }
    void applicationWillTerminate() {}
    /// Whether an application of exactly that name is running.
    bool isAppRunning(std::string_view name) const;
    void getSystemVersion(int& major, int& minor) const;

    // ---- Data files

    /// Null when the platform knows no such folder.
    std::optional<std::filesystem::path> copyDataFolderURL() const;
    /// Null when the file is damaged; see core/DataFiles.h.
    std::optional<Records> copyArrayFromDataFile(std::string_view fileName);
    /// Keeps what the file held. False when nothing was written: the array is null, the last reading of the file
    /// failed, or the disk did.
    [[nodiscard]] bool writeArray(const std::optional<Records>& array, std::string_view toDataFile,
                                  Replacing replacing = Replacing::Change);
    void showDataFilesInFinder();
    /// The history narrowed by dates, pop-ups and fill type (none for a tab without such a group). Null
    /// when the dates were refused; the user has been told.
    std::optional<Records> copyArrayAndCheckDates(const DateField& beginDate, const DateField& andEndDate,
                                                  const PopUpButton& forPatientPop,
                                                  const PopUpButton& forPrescriptionPop, const Matrix* forPrescripType);
    /// Answers whether the record was stored.
    bool writeToFileAndSetPopups(const InputArray& input, std::optional<Records> withArray);

    // ---- Earlier states

    void showEarlierStates();
    void earlierStateSelected();
    void respondToBringBackBtn();
    void bringBackState(const EarlierState& state);
    /// What is chosen and shown of a household is another household's no more.
    void forgetChoicesAndFigures();
    /// Names the files whose last reading found them damaged.
    void showUnreadableBar();

    // ---- Alerts

    /// A one-button message on the window or sheet of that name: the title string is the bold line.
    void doSheetAlert(const std::string& window, const std::string& errorString, const std::string& titleString);
    static Alert copySheetAlertWithErrorString(const std::string& errorString, const std::string& titleString,
                                               const std::string& okBtnTitle, const std::string& canBtnTitle,
                                               const std::string& okBtnToolTip, const std::string& canBtnToolTip);
    static Alert copySheetAlertWithErrorString(const std::string& errorString, const std::string& titleString,
                                               const std::string& firstBtnTitle, const std::string& secondBtnTitle);
    /// Blocks. An empty second title leaves one button; else the second one is that which cancels.
    int runModalAlert(AlertStyle style, const std::string& messageText, const std::string& informativeText,
                      const std::string& firstButtonTitle, const std::string& secondButtonTitle = {});
    static Alert modalAlert(AlertStyle style, const std::string& messageText, const std::string& informativeText,
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
    void popUpSelectedOnTab1(const PopUpButton& sender);
    void patientPopUpSelected(const PopUpButton& sender);
    /// The same with the history in hand.
    void patientPopUpSelected(const PopUpButton& sender, const std::optional<Records>& history);

    // ---- Tables

    int numberOfRowsInTableView(const TableView& tableView) const override;
    const Value* tableView(const TableView& tableView, const std::string& objectValueForTableColumn,
                           int row) const override;
    void tableView(TableView& tableView, const Value& setObjectValue, const std::string& forTableColumn,
                   int row) override;
    void sortDescriptorsDidChange(TableView& tableView) override;
    bool willDisplayCell(const TableView& tableView, const std::string& forTableColumn, int row) const override;
    std::optional<CellGauge> gaugeOfCell(const TableView& tableView, const std::string& forTableColumn,
                                         int row) const override;
    void respondToTableViewClick(const TableView& tableView);
    void populateTableViewArrayFromFileArray(const std::optional<Records>& records, Records& toTableViewArray);
    std::vector<std::string> copyColumnTitlesOnTab1() const;
    /// Selects, as a click would, the next row that holds the text in any column; see nextRowHolding().
    std::optional<int> findInTable(TableView& table, const std::string& text, int from, SearchDirection direction);
    /// Goes on from the selected row with what was sought last in the table.
    std::optional<int> findAgain(TableView& table, SearchDirection direction);
    void setChange(Button& changeBtn, Button& deleteBtn, bool onOff);
    /// The prescriber pop-up is left alone; see behaviours.
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

    // ---- Tab 1: filter sheet, row's menu

    void showFilterSheetForTab1();
    void respondToShowBtnPane1();
    /// Shows every fill again, newest first.
    void showAllFills();
    bool areBeginEndDatesOK(Date beginDate, Date theEndDate);
    std::optional<Records> copyAllPrescripHistDictsForSelectedPatient(const PopUpButton& patientPop,
                                                                      const std::optional<Records>& history) const;

    void updateHistoryMenu();
    void respondToHistoryMenu(int itemIndex);

    // ---- Tab 1: first steps

    /// Open while the history is empty; null is a damaged one.
    void showFirstSteps(const std::optional<Records>& history);
    /// Which steps are done, as the form's pop-ups say.
    void tickFirstSteps();
    void startFirstFill();

    // ---- Tab 2: schedule, reminders

    void respondToShowBtnPane2();
    void menuNeedsUpdate(Menu& menu);
    void respondToContextMenuTab2(int itemIndex);
    void userNotificationCenter(const UserNotification& didActivateNotification);
    /// Yes, always: a reminder shows also while the program is in front.
    bool shouldPresentNotification(const UserNotification& notification) const;
    void respondToUserNotification(const UserNotification& notification);

    // ---- Scheduled and standing reminders

    void showScheduledReminders();
    void removeSelectedReminder();
    /// Shows in the menu what is kept.
    void setStandingReminderMenu();
    void chooseStandingReminder();
    /// Tab 2 with the latest fills of all patients and drugs: what a standing reminder is about.
    void showLatestFillsOfAll();

    // ---- Tab 3: costs

    void respondToShowBtnPane3();
    /// The chart that the switch stands on, of what Show found last.
    void showCostChart();
    /// As before the first Show.
    void clearCosts();
    void printCostChart();

    // ---- Tab 4: reports

    void respondToPrintBtnPane4(const Button& sender);
    void processReportPane4(int reportType);
    void reportChkBoxClicked();
    bool areAllCheckBoxesON() const;
    void ExportToTabDelimited() {}

    // ---- Reference lists

    /// The sheet of the pop-up's list with its entries by name.
    void openListSheet(const ListSheet& list);
    void showOneSheet(const PopUpButton& popUp, const std::optional<Records>& whichFile);
    void displaySheet(Sheet& sheet);
    void doAddFromSheet(const Button& sender);
    // True when refused: the user has been told.
    bool doAddFromDrugSheet(const Button& sender);
    bool doAddFrompatientSheet(const Button& sender);
    bool doAddFrompharmacySheet(const Button& sender);
    bool doAddFromPrescriberSheet(const Button& sender);
    void changeBtnOnSheetPressed(Button& sender);
    void doDeleteDriver(Button& sender);
    /// On a change request the list without the entry is not written: the add that follows writes it, with or
    /// without the new entry, so that no kill and no full disk comes between the two.
    bool doDeleteFromSheet(Button& sender, bool originFromChangeRequest);
    void sheetCloseBtnPressed(const Button& sender);
    /// What the four have in common.
    bool addToList(const ListSheet& list);
    void respondToTableViewDblClickDriver(const TableView& tableView);
    void respondToTVDblClickOnSheet(const ListSheet& list);
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
    /// What the drop targets' "ImageChanged" brings about.
    void imageChanged(const std::filesystem::path& url);
    void urlIsNotFoundInHZNsSandbox(const std::filesystem::path& url);
    void addReceiptImageToDict(Record& record) const;
    void buildImageViewAndSetWithURL(const std::optional<std::filesystem::path>& url);
    void removeAction();
    void updateReceiptMenu();
    void respondToReceiptMenu(int itemIndex);

    // ---- Date pickers

    void togglePopOver(Control& sender);
    void userPickedFromGraphicalDatePicker();

    // ---- Appearance, help, version check

    void darkModeChanged();
    void myShowHelp();
    void showKeyboardHelp();
    void showAbout();
    void newVersionCheck();
    void doLaunchURL();

private:
    void connectActions();
    void connectTextFields();
    void connectListSheets();
    void fillDosagePopUps();
    void fillCostChartSwitch();
    Records* rowsOfTable(const TableView& tableView);
    const Records* rowsOfTable(const TableView& tableView) const;
    /// What an internal error ends with: the alert on the main window, then the end of the program.
    void reportInternalErrorAndTerminate(const std::string& messageText, const std::string& operation);
    /// The status line and the mark of the row just stored last until the next action begins.
    void beginAction();
    /// Says so in the status line and marks the row, once the fill at the position is stored.
    void showStoredFill(std::size_t position, const std::string& status);
    /// What every change of the history ends with on tab 1: the rows anew, unfiltered, in file order, and their count.
    void rebuildHistoryTable(const std::optional<Records>& history);
    void refreshPatientPopUpForShowTab1(std::vector<std::string> patients);
    /// Switches what a tab shows of its filter; any other tab has none.
    void gateShowControls(int tab, bool enable);
    void sortNewestFirst();
    EntryForm entryForm() const;
    /// By what the filter sheet stands.
    HistoryFilter chosenFilter() const;
    const Control& controlOfFormField(FormField field) const;
    /// The tab-1 row under the last click; null when there is none.
    const Record* clickedHistoryRow() const;
    void copyRow(const Record& row);
    /// Opens a page of the help in the user's language.
    void showHelpPage(const std::string& page);
    void chooseReceipt();
    void pasteReceipt();
    /// A file that came otherwise than by a drop: the same rules hold.
    void takeReceipt(const std::filesystem::path& file);
    void sayCannotBeTaken(const std::filesystem::path& file);
    void showReceiptAttached(const std::string& name);
    void showReceiptProblem(KPXDropButton::State state, const std::string& name);
    /// A receipt that the user neither replaced nor removed outlives a change, also while its file is not found.
    void keepUntouchedReceipt(const Record& stored, Record& changed) const;
    /// In the popover's view; false for a file that is neither picture nor PDF.
    bool displayReceipt(const std::filesystem::path& file);
    /// In the popover, leaving the form and its receipt alone.
    void showReceiptOfRow(const Record& row);
    /// The popover's view shows the form's receipt again.
    void showReceiptOfForm();
    /// The receipt of a tab-1 row becomes the form's; a row without one clears it.
    void restoreReceipt(const Record& row);
    /// The stored record that the selected tab-1 row came from; none when no row is selected.
    std::optional<Record> selectedRecordForSearching() const;

    /// The tab-2 row under the last click; null when there is none.
    const Record* clickedScheduleRow() const;
    void reloadReminders();

    /// The list for which the condition holds; null when there is none.
    const ListSheet* listWhere(const auto& condition) const {
        const auto list = std::ranges::find_if(m_listSheets, condition);
        return list == m_listSheets.end() ? nullptr : &*list;
    }

    Ports m_ports;
    LocalizedStrings m_strings;
    std::optional<FileDescriptor> m_dataFolderLock;
    /// What the last reading of each data file found.
    std::map<std::string, DataFile::State, std::less<>> m_readings;
    /// A list that a change request has taken its entry out of, until the add that follows.
    std::optional<Records> m_listBeingChanged;
    /// In the order of their rows.
    std::vector<EarlierState> m_earlierStates;
    std::array<ListSheet, 4> m_listSheets;
    NotificationCenter m_notificationCenter;
    CostCharts m_costCharts;
    std::optional<std::filesystem::path> m_imageFilePathURL;
    /// What the popover says of the form's receipt when it cannot be displayed; else empty.
    std::string m_receiptMessage;
    /// Whether the form's receipt, or its lack of one, is still the one of the row that was loaded.
    bool m_receiptIsAsLoaded = false;
    std::map<const TableView*, std::string> m_soughtText;
};

/// The main window's name where alerts are addressed.
inline constexpr char mainWindow[] = "window";

}  // namespace kpx
