#pragma once

#include "core/DataFiles.h"
#include "schedule/RefillsToOrder.h"
#include "tests/support/AlertDouble.h"
#include "tests/support/ClockDouble.h"
#include "tests/support/DefaultsDouble.h"
#include "tests/support/NotificationDouble.h"
#include "tests/support/PlatformDoubles.h"

#include <filesystem>
#include <string>

namespace kpx::test {

/// Where a test's application lives.
struct Surroundings {
    RegionSettings region;
    std::filesystem::path dataHome;    ///< empty: the platform knows no such folder
    std::filesystem::path configHome;  ///< empty: preferences are not kept
};

/// The program's region where all of it is of one locale.
inline RegionSettings regionOf(const std::string& locale, const std::string& timeZone) {
    return regionSettings([&](const std::string& name) {
        return name == "LC_ALL" ? std::optional(locale) : name == "TZ" ? std::optional(timeZone) : std::nullopt;
    });
}

/// A whole platform of test doubles. What happens is told to the sink. The clock starts on 5 March 2024
/// at noon, local time.
class TestPlatform {
public:
    TestPlatform(const Surroundings& surroundings, const EventSink& sink)
        : localTime(timeZoneFromName(surroundings.region.timeZone, surroundings.region.zoneFolder)),
          alerts(sink),
          windows(sink),
          workspace(sink, surroundings.dataHome),
          defaults(surroundings.configHome.empty() ? std::filesystem::path()
                                                   : surroundings.configHome / "Velmora" / "preferences.json"),
          clock(localTime.parse("2024-03-05T12:00:00").value_or(Date{})),
          notifications(sink, clock, localTime),
          system(Region(surroundings.region)),
          web(sink),
          preview(sink) {
        clock.setScheduled(notifications);
        notifications.refillsToOrder = [this](const StandingDays& days, const auto& reminded) {
            return refillsToOrderOn(days, reminded);
        };
    }

    Ports ports() {
        return {alerts, windows, workspace, defaults, notifications, clock,
                system, web,     preview,   bundle,   files,         clipboard};
    }

    LocalTime localTime;
    AlertDouble alerts;
    WindowDouble windows;
    WorkspaceDouble workspace;
    DefaultsDouble defaults;
    ClockDouble clock;
    NotificationDouble notifications;
    SystemDouble system;
    WebDouble web;
    PreviewDouble preview;
    BundleDouble bundle;
    FileChooserDouble files;
    ClipboardDouble clipboard;

private:
    /// As the reminder agent does it: from the file, with the region and the texts of the moment.
    std::optional<RefillsToOrder> refillsToOrderOn(const StandingDays& days,
                                                   const std::vector<RemindedPrescription>& reminded) {
        const auto folders = workspace.applicationSupportDirectories();
        const auto history = folders.empty()
                                 ? Records()
                                 : copyArrayFromDataFile(folders.front() / dataFolderName, prescriptionHistoryFile);
        const Environment environment{clock.now(), system.region()};
        return refillsToOrder(history.value_or(Records()), days, reminded, environment,
                              textsFor(bundle.resources(), environment.region.languageCodes()));
    }
};

}  // namespace kpx::test
