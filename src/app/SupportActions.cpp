#include "app/Addresses.h"
#include "app/KPXAppDelegate.h"
#include "region/LocalizedStrings.h"
#include "values/NumberText.h"
#include "values/Unicode.h"

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

void KPXAppDelegate::myShowHelp() { showHelpPage("KPXHelp.htm"); }

void KPXAppDelegate::showKeyboardHelp() { showHelpPage("Keyboard.htm"); }

void KPXAppDelegate::showHelpPage(const std::string& page) {
    const auto resources = m_ports.bundle.resources();
    const auto folder = resources / (languageOfTexts(resources, environment().region.languageCodes()) + ".lproj");
    // Without a folder for the language nothing opens; see behaviours.
    std::error_code error;
    if (std::filesystem::is_directory(folder, error)) {
        m_ports.workspace.open(folder.string() + "/KPXHelp/" + page, {});
    }
}

void KPXAppDelegate::showAbout() {
    const std::string version = m_ports.bundle.shortVersionString();
    const std::string folder = copyDataFolderURL().value_or("").string();
    runModalAlert(
        AlertStyle::Informational, formatted(localized("Velmora %1$@"), {version}),
        formatted(localized("Your data lie in %1$@."), {folder}) + "\r\r" +
            localized("Velmora is made with Qt (GNU Lesser General Public License, version 3), ICU (Unicode "
                      "License), Expat (MIT License), Abseil (Apache License, version 2.0), libseccomp (GNU Lesser "
                      "General Public License, version 2.1) and PDFium (BSD License).") +
            "\r\r" + localized("No licence has been given for Velmora itself yet."),
        localized("OK"));
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
        const auto message = [this](const std::string& version) {
            return m_strings.sentence("A new version of KPX (%@) is available.", {version},
                                      localized("A new version of KPX (") + version + localized(") is available."));
        };
        Alert alert = modalAlert(AlertStyle::Informational, message(fetched),
                                 localized("It can be downloaded from the CQB web site."), localized("Go to web site"),
                                 localized("Cancel"));
        constexpr std::size_t shownCharacters = 80;
        alert.shownMessage = message(beginningInOneLine(fetched, shownCharacters));
        if (m_ports.alerts.runModal(alert) == alertFirstButtonReturn) {
            doLaunchURL();
        }
        return;
    }
    runModalAlert(
        AlertStyle::Informational,
        m_strings.sentence("This version of KPX (%@) is the current version.", {installed},
                           localized("This version of KPX (") + installed + localized(") is the current version.")),
        "", localized("OK"));
}

void KPXAppDelegate::doLaunchURL() {
    m_ports.workspace.open(productPageAddress, [this] {
        runModalAlert(AlertStyle::Informational,
                      localized("Unable to Find KPX web page, is there a live connection to the Web?"), "",
                      localized("OK"));
    });
}

}  // namespace kpx
