#include "app/KPXAppDelegate.h"

// Which control runs which action.

namespace kpx {

void KPXAppDelegate::connectActions() {
    outlets.theTabView.didSelect = [this](int index) { tabView(index); };

    for (PopUpButton* popUp :
         {&outlets.patientPopTab1, &outlets.pharmacyPopTab1, &outlets.drugPopTab1, &outlets.prescriberPopTab1}) {
        popUp->action = [this, popUp] { popUpSelectedOnTab1(*popUp); };
    }
    for (PopUpButton* popUp :
         {&outlets.patientPopForShowTab1, &outlets.patientPopTab2, &outlets.patientPopTab3, &outlets.patientPopTab4}) {
        popUp->action = [this, popUp] { patientPopUpSelected(*popUp); };
    }

    outlets.addBtnTab1.action = [this] { processAddToList(); };
    outlets.changeBtnTab1.action = [this] { changeMaintFromListAction(); };
    outlets.deleteBtnTab1.action = [this] { doMaintDeleteDriver(); };
    outlets.filterBtnTab1.action = [this] { showFilterSheetForTab1(); };
    outlets.showBtnTab1.action = [this] { respondToShowBtnPane1(); };
    outlets.closeBtnFilterSheet.action = [this] { sheetCloseBtnPressed(outlets.closeBtnFilterSheet); };
    outlets.allBtnTab1.action = [this] { showAllFills(); };
    outlets.contextMenuTab1.needsUpdate = [this] { updateHistoryMenu(); };
    outlets.contextMenuTab1.action = [this](int index) { respondToHistoryMenu(index); };
    outlets.contextMenuReceipt.needsUpdate = [this] { updateReceiptMenu(); };
    outlets.contextMenuReceipt.action = [this](int index) { respondToReceiptMenu(index); };
    outlets.findReceiptBtn.action = [this] { chooseReceipt(); };
    outlets.dropButton.pictureFailed = [this](bool notFound) {
        if (m_imageFilePathURL) {
            showReceiptProblem(notFound ? KPXDropButton::State::NotFound : KPXDropButton::State::CannotBeShown,
                               m_imageFilePathURL->filename().string());
        }
    };
    outlets.firstFillBtn.action = [this] { startFirstFill(); };
    outlets.dropButton.pictureShown = [this] {
        if (m_imageFilePathURL && outlets.dropButton.state() != KPXDropButton::State::Attached) {
            showReceiptAttached(m_imageFilePathURL->filename().string());
        }
    };
    outlets.showPrintTableListBtn.action = [this] { respondToPrintBtnPane4(outlets.showPrintTableListBtn); };

    outlets.showBtnTab2.action = [this] { respondToShowBtnPane2(); };
    outlets.contextMenuTab2.needsUpdate = [this] { menuNeedsUpdate(outlets.contextMenuTab2); };
    outlets.contextMenuTab2.action = [this](int index) { respondToContextMenuTab2(index); };
    outlets.showBtnTab3.action = [this] { respondToShowBtnPane3(); };
    outlets.costChartKind.action = [this] { showCostChart(); };
    outlets.printCostChartBtn.action = [this] { printCostChart(); };
    outlets.reportsTab4.action = [this] { reportChkBoxClicked(); };
    outlets.printBtnTab4.action = [this] { respondToPrintBtnPane4(outlets.printBtnTab4); };

    for (Button* trigger :
         {&outlets.popOverTriggerTab1DispenseDate, &outlets.popOverTriggerTab1ExpirationDate,
          &outlets.fromDateFilterCalIcon, &outlets.toDateFilterCalIcon, &outlets.popOverTriggerTab3BeginDate,
          &outlets.popOverTriggerTab3EndDate, &outlets.popOverTriggerTab4BeginDate, &outlets.popOverTriggerTab4EndDate,
          static_cast<Button*>(&outlets.dropButton)}) {
        trigger->action = [this, trigger] { togglePopOver(*trigger); };
    }
    outlets.theDatePicker.action = [this] { userPickedFromGraphicalDatePicker(); };

    outlets.scheduledRemindersMenuItem.action = [this] { showScheduledReminders(); };
    outlets.tableViewReminders.action = [this] { respondToTableViewClick(outlets.tableViewReminders); };
    outlets.removeReminderBtn.action = [this] { removeSelectedReminder(); };
    outlets.closeBtnRemindersSheet.action = [this] { sheetCloseBtnPressed(outlets.closeBtnRemindersSheet); };
    outlets.standingReminder.action = [this] { chooseStandingReminder(); };
    outlets.earlierStatesMenuItem.action = [this] { showEarlierStates(); };
    outlets.unreadableBarBtn.action = [this] { showEarlierStates(); };
    outlets.tableViewEarlierStates.action = [this] { earlierStateSelected(); };
    outlets.bringBackBtn.action = [this] { respondToBringBackBtn(); };
    outlets.closeBtnEarlierStatesSheet.action = [this] { sheetCloseBtnPressed(outlets.closeBtnEarlierStatesSheet); };

    outlets.exportMenuItem.action = [this] { ExportToTabDelimited(); };
    outlets.helpMenuItem.action = [this] { myShowHelp(); };
    outlets.showDataFilesMenuItem.action = [this] { showDataFilesInFinder(); };
    outlets.keyboardMenuItem.action = [this] { showKeyboardHelp(); };
    outlets.aboutMenuItem.action = [this] { showAbout(); };
    outlets.versionCheckMenuItem.action = [this] { newVersionCheck(); };
    outlets.webPageMenuItem.action = [this] { doLaunchURL(); };
}

void KPXAppDelegate::connectTextFields() {
    for (Control* control : outlets.controls()) {
        if (auto* field = dynamic_cast<TextField*>(control)) {
            field->textDidChange = [this, field] { controlTextDidChange(*field); };
            field->textDidEndEditing = [this, field] { controlTextDidEndEditing(*field); };
        }
    }
}

void KPXAppDelegate::connectListSheets() {
    for (Control* control : outlets.controls()) {
        if (auto* table = dynamic_cast<TableView*>(control)) {
            table->dataSource = this;
            table->find = [this, table](const std::string& text, int from) {
                return findInTable(*table, text, from, SearchDirection::Forward).has_value();
            };
            table->findAgain = [this, table](bool forward) {
                return findAgain(*table, forward ? SearchDirection::Forward : SearchDirection::Backward).has_value();
            };
        }
    }
    for (ListSheet& list : m_listSheets) {
        list.firstBtn.action = [this, &list] { openListSheet(list); };
        list.addBtn.action = [this, &list] { doAddFromSheet(list.addBtn); };
        list.changeBtn.action = [this, &list] { changeBtnOnSheetPressed(list.changeBtn); };
        list.deleteBtn.action = [this, &list] { doDeleteDriver(list.deleteBtn); };
        list.closeBtn.action = [this, &list] { sheetCloseBtnPressed(list.closeBtn); };
    }
}

}  // namespace kpx
