#include "tests/runner/Session.h"

#include <array>
#include <utility>

namespace kpx::runner {

namespace {

/// The edge of its anchor at which a popover opens: to the right of it.
constexpr int maximumXEdge = 2;

constexpr std::array tabPlaces{Place::Tab1, Place::Tab2, Place::Tab3, Place::Tab4};

std::optional<int> tabOf(Place place) {
    for (std::size_t index = 0; index < tabPlaces.size(); ++index) {
        if (tabPlaces[index] == place) {
            return static_cast<int>(index);
        }
    }
    return std::nullopt;
}

bool opensSheet(const Control& menuItem) { return menuItem.name() == "scheduledRemindersMenuItem"; }

template <typename Kind>
std::vector<Kind*> controlsOfKind(const ControlRegistry& registry) {
    std::vector<Kind*> found;
    for (Control* control : registry.controls()) {
        if (auto* wanted = dynamic_cast<Kind*>(control)) {
            found.push_back(wanted);
        }
    }
    return found;
}

}  // namespace

Session::Session(const test::Surroundings& surroundings, test::EventSink sink)
    : platform(surroundings, sink), m_sink(std::move(sink)) {}

bool Session::start(const std::optional<UserNotification>& launchNotification) {
    const Ports ports = platform.ports();
    auto application = std::make_unique<KPXAppDelegate>(
        ports, textsFor(ports.bundle.resources(), ports.system.region().languageCodes()));
    if (!application->claimDataFolder()) {
        return false;
    }
    m_application = std::move(application);
    reportSheetsAndPopovers();
    m_application->applicationDidFinishLaunching(launchNotification);
    return true;
}

void Session::reportSheetsAndPopovers() {
    for (Sheet* sheet : controlsOfKind<Sheet>(outlets())) {
        sheet->changed = [this, sheet, wasOpen = sheet->isOpen()]() mutable {
            if (sheet->isOpen() != std::exchange(wasOpen, sheet->isOpen())) {
                m_sink(Json{{"event", "sheet"}, {"name", sheet->name()}, {"open", sheet->isOpen()}});
            }
        };
    }
    // An opening is told also when the popover was open already: it moved to another anchor.
    for (Popover* popover : controlsOfKind<Popover>(outlets())) {
        popover->changed = [this, popover] {
            if (popover->isOpen()) {
                m_sink(Json{{"event", "popover"},
                            {"name", popover->name()},
                            {"anchor", popover->anchor()->name()},
                            {"edge", maximumXEdge}});
            }
        };
    }
}

const Records* Session::rowsOf(const TableView& table) const {
    if (!m_application) {
        return nullptr;
    }
    const Outlets& outlets = m_application->outlets;
    const std::array<std::pair<const TableView*, const Records*>, 8> tables{{
        {&outlets.tableViewTab1, &m_application->maintArrayForTVTab1},
        {&outlets.tableViewTab2, &m_application->maintDueArrayForTV},
        {&outlets.tableViewpatientSheet, &m_application->patientArrayForTV},
        {&outlets.tableViewpharmacySheet, &m_application->pharmacyArrayForTV},
        {&outlets.tableViewDrugSheet, &m_application->drugArrayForTV},
        {&outlets.tableViewPrescriberSheet, &m_application->prescriberArrayForTV},
        {&outlets.tableViewReminders, &m_application->remindersArrayForTV},
        {&outlets.tableViewEarlierStates, &m_application->earlierStatesArrayForTV},
    }};
    for (const auto& [view, rows] : tables) {
        if (view == &table) {
            return rows;
        }
    }
    return nullptr;
}

std::optional<std::string> Session::obstacleOnMainWindow() {
    if (platform.alerts.hangsFrom(mainWindow)) {
        return "an alert on the main window is not answered";
    }
    for (const Sheet* sheet : controlsOfKind<Sheet>(outlets())) {
        if (sheet->isOpen()) {
            return sheet->name() + " is open";
        }
    }
    return std::nullopt;
}

std::optional<std::string> Session::obstacleOnSheet(Place place) {
    for (const Sheet* sheet : controlsOfKind<Sheet>(outlets())) {
        if (sheet->place() != place) {
            continue;
        }
        if (!sheet->isOpen()) {
            return sheet->name() + " is closed";
        }
        if (platform.alerts.hangsFrom(sheet->name())) {
            return "an alert on " + sheet->name() + " is not answered";
        }
    }
    return std::nullopt;
}

std::optional<std::string> Session::obstacleOnPopover(const Popover& popover) {
    if (!popover.isOpen()) {
        return popover.name() + " is closed";
    }
    return liesInMainWindow(popover.anchor()->place()) ? obstacleOnMainWindow()
                                                       : obstacleOnSheet(popover.anchor()->place());
}

std::optional<std::string> Session::obstacle(const Control& control) {
    if (!control.isEnabled()) {
        return control.name() + " is disabled";
    }
    switch (control.place()) {
        case Place::MenuBar:
            return opensSheet(control) ? obstacleOnMainWindow() : std::nullopt;
        case Place::DatePopover:
            return obstacleOnPopover(outlets().thePopOver);
        case Place::ReceiptPopover:
            return obstacleOnPopover(outlets().receiptPopover);
        case Place::FilterSheet:
        case Place::DrugSheet:
        case Place::PatientSheet:
        case Place::PharmacySheet:
        case Place::PrescriberSheet:
        case Place::RemindersSheet:
        case Place::EarlierStatesSheet:
            return obstacleOnSheet(control.place());
        default:
            break;
    }
    if (const std::optional<int> tab = tabOf(control.place()); tab && *tab != outlets().theTabView.selectedTab()) {
        return control.name() + " lies on a tab that is not selected";
    }
    return obstacleOnMainWindow();
}

void Session::beginAct(const Control* control) {
    m_openMenu = nullptr;
    if (!control || control->place() != Place::DatePopover) {
        outlets().thePopOver.close();
    }
    if (!control || control->place() != Place::ReceiptPopover) {
        outlets().receiptPopover.close();
    }
    if (control && control->place() == Place::MenuBar) {
        return;
    }
    for (TextField* field : controlsOfKind<TextField>(outlets())) {
        if (field != control) {
            field->userEndEditing();
        }
    }
}

}  // namespace kpx::runner
