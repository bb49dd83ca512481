#include "app/Addresses.h"
#include "app/KPXAppDelegate.h"
#include "core/Numbers.h"
#include "core/Unicode.h"

#include <string>

namespace kpx {

void KPXAppDelegate::darkModeChanged() {
    const auto version = m_ports.system.systemVersion();
    // Compared as decimals, not part by part: 10.9 counts as greater than 10.14.
    const double level = leadingNumber(std::to_string(version.major) + "." + std::to_string(version.minor));
    const bool dark = level >= 10.14 && m_ports.system.appearanceStyle().find("Dark") != std::string::npos;
    for (Button* button : {&outlets.popOverTriggerTab1DispenseDate, &outlets.popOverTriggerTab1ExpirationDate,
                           &outlets.popOverTriggerTab1BeginDate, &outlets.popOverTriggerTab1EndDate,
                           &outlets.popOverTriggerTab3BeginDate, &outlets.popOverTriggerTab3EndDate,
                           &outlets.popOverTriggerTab4BeginDate, &outlets.popOverTriggerTab4EndDate,
                           &outlets.fromDateFilterCalIcon, &outlets.toDateFilterCalIcon}) {
        button->setImage(dark ? "calIcon_dark.png" : "calIcon.png");
    }
}

void KPXAppDelegate::myShowHelp() {
    const auto folder = m_ports.bundle.resources() / (environment().region.languageCode() + ".lproj");
    // Deliberately no fallback: without a folder for the language nothing opens.
    std::error_code error;
    if (std::filesystem::is_directory(folder, error)) {
        m_ports.workspace.open(folder.string() + "/KPXHelp/KPXHelp.htm");
    }
}

void KPXAppDelegate::newVersionCheck() {
    const auto response = m_ports.web.fetch(versionFileAddress);
    if (!response || response->status < 200 || response->status > 299 || response->body.empty()) {
        runModalAlert(AlertStyle::Informational, localized("Version check failed."),
                      localized("The KPX web site could not be contacted."), localized("OK"));
        return;
    }
    const std::string fetched = textFromMacOSRoman(response->body);
    const std::string installed = m_ports.bundle.shortVersionString();
    // Compared as plain text and untrimmed: the file must hold the bare version.
    if (fetched > installed) {
        const int answer = runModalAlert(
            AlertStyle::Informational,
            formatted("%@%@%@", {localized("A new version of KPX ("), fetched, localized(") is available.")}),
            localized("It can be downloaded from the CQB web site."), localized("Go to web site"), localized("Cancel"));
        if (answer == alertFirstButtonReturn) {
            doLaunchURL();
        }
        return;
    }
    runModalAlert(
        AlertStyle::Informational,
        formatted("%@%@%@", {localized("This version of KPX ("), installed, localized(") is the current version.")}),
        "", localized("OK"));
}

void KPXAppDelegate::doLaunchURL() {
    if (!m_ports.workspace.open(productPageAddress)) {
        runModalAlert(AlertStyle::Informational,
                      localized("Unable to Find KPX web page, is there a live connection to the Web?"), "",
                      localized("OK"));
    }
}

}  // namespace kpx
