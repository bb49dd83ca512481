#include "app/KPXAppDelegate.h"

namespace kpx {

void KPXAppDelegate::doSheetAlert(const std::string& window, const std::string& errorString,
                                  const std::string& titleString) {
    Alert alert;
    alert.messageText = titleString;
    alert.informativeText = errorString;
    alert.buttons = {{localized("OK"), {}, AlertKey::None}};
    // The context value marks the alert as one whose end means nothing.
    m_ports.alerts.beginSheet(
        window, alert, [this, errorString](int returnCode) { calledWhenAlertEnds(returnCode, errorString); }, {});
}

Alert KPXAppDelegate::copySheetAlertWithErrorString(const std::string& errorString, const std::string& titleString,
                                                    const std::string& okBtnTitle, const std::string& canBtnTitle,
                                                    const std::string& okBtnToolTip, const std::string& canBtnToolTip) {
    Alert alert;
    alert.messageText = titleString;
    alert.informativeText = errorString;
    alert.smallControls = true;
    if (!okBtnTitle.empty()) {
        alert.buttons.push_back({okBtnTitle, okBtnToolTip, AlertKey::Return});
    }
    if (!canBtnTitle.empty()) {
        alert.buttons.push_back({canBtnTitle, canBtnToolTip, AlertKey::Escape});
    }
    return alert;
}

Alert KPXAppDelegate::copySheetAlertWithErrorString(const std::string& errorString, const std::string& titleString,
                                                    const std::string& firstBtnTitle,
                                                    const std::string& secondBtnTitle) {
    Alert alert = copySheetAlertWithErrorString(errorString, titleString, firstBtnTitle, secondBtnTitle, {}, {});
    alert.smallControls = false;
    return alert;
}

Alert KPXAppDelegate::modalAlert(AlertStyle style, const std::string& messageText, const std::string& informativeText,
                                 const std::string& firstButtonTitle, const std::string& secondButtonTitle) {
    Alert alert;
    alert.messageText = messageText;
    alert.informativeText = informativeText;
    alert.style = style;
    alert.buttons = {{firstButtonTitle, {}, AlertKey::None}};
    if (!secondButtonTitle.empty()) {
        alert.buttons.push_back({.title = secondButtonTitle, .toolTip = {}, .cancels = true});
    }
    return alert;
}

int KPXAppDelegate::runModalAlert(AlertStyle style, const std::string& messageText, const std::string& informativeText,
                                  const std::string& firstButtonTitle, const std::string& secondButtonTitle) {
    return m_ports.alerts.runModal(
        modalAlert(style, messageText, informativeText, firstButtonTitle, secondButtonTitle));
}

void KPXAppDelegate::calledWhenAlertEnds(int returnCode, const std::optional<std::string>& contextInfo) {
    if (contextInfo || returnCode != alertSecondButtonReturn) {
        return;
    }
    if (deleteMaintFromList()) {
        doSheetAlert(mainWindow, "", localized("Delete request failed - not deleted"));
    }
}

void KPXAppDelegate::dataFolderInUseMsg() {
    runModalAlert(
        AlertStyle::Informational, localized("Velmora is running already"),
        formatted(localized("Another Velmora works with the data folder\r%@\r\rPlease go on there, or close it "
                            "before you start this one again."),
                  {copyDataFolderURL().value_or("").string()}),
        localized("OK"));
}

bool KPXAppDelegate::alertShowHelp() {
    myShowHelp();
    return true;
}

void KPXAppDelegate::noReportsSelectedErrorMsg() {
    doSheetAlert(mainWindow, localized("Use Checkboxes to select reports"), localized("No Reports Selected"));
}

void KPXAppDelegate::noDataFoundErrorMsg() {
    doSheetAlert(mainWindow, localized("Adjusting the selection criteria might help."),
                 localized("No qualifying prescriptions found based on selection criteria"));
}

void KPXAppDelegate::reportInternalErrorAndTerminate(const std::string& messageText, const std::string& operation) {
    doSheetAlert(mainWindow, m_strings.sentence("Error in %@", {operation}, localized("Error in " + operation)),
                 localized(messageText));
    m_ports.windows.terminate();
}

}  // namespace kpx
