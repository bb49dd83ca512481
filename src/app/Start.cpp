#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "core/Keys.h"
#include "core/Sorting.h"
#include "files/FolderLock.h"
#include "region/DateUtilities.h"

#include <algorithm>

namespace kpx {

namespace {

constexpr char paneLastUsedKey[] = "Pane last used when window closed";
constexpr char toolTipDelayKey[] = "NSInitialToolTipDelay";
constexpr int toolTipDelayMilliseconds = 3000;
constexpr double splashSeconds = 5.0;

}  // namespace

void KPXAppDelegate::applicationDidFinishLaunching(const std::optional<UserNotification>& launchNotification) {
    if (!doInit()) {
        return;
    }
    establishDefaultPrefs();
    darkModeChanged();
    m_ports.system.appearanceDidChange = [this] { darkModeChanged(); };

    if (const auto folder = copyDataFolderURL()) {
        makeDataFolder(*folder);
        if (!claimDataFolder()) {  // another program's first start has just made it
            dataFolderInUseMsg();
            m_ports.windows.terminate();
            return;
        }
        EarlierFolder(*folder).settledContents(m_ports.clock.now(), m_ports.clock.now());
    }
    showHousehold(getLastTabUsedFromPrefs());
    setFormattersForInputFields();
    setStandingReminderMenu();

    m_ports.notifications.didActivateNotification = [this](const UserNotification& notification) {
        userNotificationCenter(notification);
    };
    m_ports.notifications.shouldPresentNotification = [this](const UserNotification& notification) {
        return shouldPresentNotification(notification);
    };
    if (launchNotification) {
        respondToUserNotification(*launchNotification);
    }
}

bool KPXAppDelegate::claimDataFolder() {
    const auto folder = copyDataFolderURL();
    if (!folder || (m_dataFolderLock && *m_dataFolderLock)) {
        return true;
    }
    auto lock = lockFolder(*folder);
    const bool free = lock.has_value();
    if (free) {
        m_dataFolderLock.emplace(*std::move(lock));
    }
    return free;
}

void KPXAppDelegate::showHousehold(int selectedTab) {
    const auto drugArray = copyArrayFromDataFile(drugFile);
    const auto pharmacyArray = copyArrayFromDataFile(pharmacyFile);
    const auto patientArray = copyArrayFromDataFile(patientFile);
    const auto prescriberArray = copyArrayFromDataFile(prescriberFile);
    const auto prescriptionHistArray = copyArrayFromDataFile(prescriptionHistoryFile);
    setPopupsStartingItem(drugArray, pharmacyArray, patientArray, prescriberArray, prescriptionHistArray);

    populateTableViewArrayFromFileArray(prescriptionHistArray, maintArrayForTVTab1);
    sortNewestFirst();
    outlets.showBtnTab1.setEnabled(true);
    outlets.showPrintTableListBtn.setEnabled(true);
    outlets.tableViewTab1.reloadData();
    setPane1();
    showFirstSteps(prescriptionHistArray);
    outlets.tableViewTab1.doubleAction = [this] { respondToTableViewDblClickTab1(); };
    outlets.tableViewTab1.action = [this] { respondToTableViewClick(outlets.tableViewTab1); };

    setDatePickerDefaults();
    setDateDefaultsWithBeginDate(outlets.beginDateTab3, outlets.endDateTab3);
    setDateDefaultsWithBeginDate(outlets.beginDateTab4, outlets.endDateTab4);

    outlets.theTabView.selectTab(selectedTab);
    setPaneBase(outlets.patientPopTab2, prescriptionHistArray);
    setPaneBase(outlets.patientPopTab3, prescriptionHistArray);
    setPaneBase(outlets.patientPopTab4, prescriptionHistArray);
    if (!prescriptionHistArray || prescriptionHistArray->empty()) {
        // Filling a patient pop-up enables its drug pop-up; without a history tabs 2 to 4 stay gated.
        gateShowControls(1, false);
        gateShowControls(2, false);
        gateShowControls(3, false);
    }
}

bool KPXAppDelegate::doInit() {
    int major = 0;
    int minor = 0;
    getSystemVersion(major, minor);
    if (major == 10 && minor <= 8) {
        runModalAlert(AlertStyle::Informational, localized("KPX will now quit"),
                      formatted(localized("Sorry, KPX requires Mac OS X Version %d.%d or higher."), {"10", "9"}),
                      localized("OK"));
        m_ports.windows.terminate();
        return false;
    }
    buildSplashWnd();
    m_ports.windows.makeMainWindowKeyAndFront(false);
    m_ports.defaults.setInteger(toolTipDelayKey, toolTipDelayMilliseconds);
    m_notificationCenter.addObserver(imageChangedNotification,
                                     [this](const std::filesystem::path& url) { imageChanged(url); });
    return true;
}

void KPXAppDelegate::establishDefaultPrefs() { m_ports.defaults.registerDefault(paneLastUsedKey, 0); }

void KPXAppDelegate::setPopupsStartingItem(const std::optional<Records>& drugArray,
                                           const std::optional<Records>& pharmacyArray,
                                           const std::optional<Records>& patientArray,
                                           const std::optional<Records>& prescriberArray,
                                           const std::optional<Records>& prescriptionHistArray) {
    const auto fillEntryPopUp = [this](PopUpButton& popUp, const char* nameKey, const std::optional<Records>& array) {
        loadAPopUpButtonUsingKey(popUp, nameKey, array, true, false);
        countArraySetPopUp(popUp, array);
    };
    fillEntryPopUp(outlets.patientPopTab1, patientNameKey, patientArray);
    fillEntryPopUp(outlets.pharmacyPopTab1, pharmacyNameKey, pharmacyArray);
    fillEntryPopUp(outlets.drugPopTab1, DrugNameKey, drugArray);
    fillEntryPopUp(outlets.prescriberPopTab1, PrescriberNameKey, prescriberArray);
    loadAPopUpButtonUsingKey(outlets.patientPopForShowTab1, MHPatientKey, prescriptionHistArray, false, true);
    outlets.patientPopForShowTab1.selectLastItem();
    loadAPopUpButtonUsingKey(outlets.drugNamePopForShowTab1, MHDrugKey, prescriptionHistArray, false, true);
    outlets.drugNamePopForShowTab1.selectLastItem();
}

void KPXAppDelegate::setDatePickerDefaults() {
    const Environment here = environment();
    outlets.dispenseDateTab1.setDate(here.now);
    outlets.expirationDateTab1.setDate(dateByAddingDays(here.now, 0, 0, 1, here));
}

void KPXAppDelegate::setDateDefaultsWithBeginDate(DateField& beginDate, DateField& endDate) {
    const Environment here = environment();
    endDate.setDate(here.now);
    beginDate.setDate(janFirstThisYear(here));
}

void KPXAppDelegate::setPaneBase(PopUpButton& patientPop, const std::optional<Records>& fromArray) {
    loadAPopUpButtonUsingKey(patientPop, MHPatientKey, fromArray, false, true);
    patientPop.selectLastItem();
    patientPopUpSelected(patientPop, fromArray);
    patientPop.selectLastItem();
}

void KPXAppDelegate::setPatientPop(PopUpButton& patientPop) {
    setPaneBase(patientPop, copyArrayFromDataFile(prescriptionHistoryFile));
}

void KPXAppDelegate::setPane1() { putCountOnContent(maintArrayForTVTab1.size(), 0); }

void KPXAppDelegate::buildSplashWnd() {
    const std::string version = m_ports.bundle.shortVersionString();
    m_ports.windows.showSplash({m_strings.sentence("Version: %@", {version}, localized("Version:") + " " + version),
                                localized("For Mac OS 10.9+")});
    m_ports.clock.callAfter(splashSeconds, [this] { closeSlpash(); });
}

void KPXAppDelegate::closeSlpash() {
    m_ports.windows.closeSplash();
    m_ports.windows.makeMainWindowKeyAndFront(true);
}

void KPXAppDelegate::sortNewestFirst() {
    sortByDescriptors(maintArrayForTVTab1, {{"dispensedate", false, Comparison::Plain}}, environment());
}

int KPXAppDelegate::getPaneLastUsed() const { return outlets.theTabView.selectedTab(); }

int KPXAppDelegate::getLastTabUsedFromPrefs() const {
    return static_cast<std::int8_t>(m_ports.defaults.integer(paneLastUsedKey));
}

void KPXAppDelegate::userSetPref() { m_ports.defaults.synchronize(); }

void KPXAppDelegate::windowWillClose() { doQuitHouseKeeping(); }

void KPXAppDelegate::doQuitHouseKeeping() {
    m_ports.defaults.setInteger(paneLastUsedKey, getPaneLastUsed());
    userSetPref();
}

bool KPXAppDelegate::isAppRunning(std::string_view name) const {
    const auto applications = m_ports.workspace.runningApplications();
    return std::ranges::find(applications, name) != applications.end();
}

void KPXAppDelegate::getSystemVersion(int& major, int& minor) const {
    const auto version = m_ports.system.systemVersion();
    major = version.major;
    minor = version.minor;
}

}  // namespace kpx
