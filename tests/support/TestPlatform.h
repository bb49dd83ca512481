#pragma once

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
    std::string timeZone;
    std::string locale;
    std::filesystem::path dataHome;    ///< empty: the platform knows no such folder
    std::filesystem::path configHome;  ///< empty: preferences are not kept
};

/// A whole platform of test doubles. What happens is told to the sink. The clock starts on 5 March 2024
/// at noon, local time.
class TestPlatform {
public:
    TestPlatform(const Surroundings& surroundings, const EventSink& sink)
        : localTime(surroundings.timeZone),
          alerts(sink),
          windows(sink),
          workspace(sink, surroundings.dataHome),
          defaults(surroundings.configHome.empty() ? std::filesystem::path()
                                                   : surroundings.configHome / "Velmora" / "preferences.json"),
          clock(localTime.parse("2024-03-05T12:00:00").value_or(Date{})),
          notifications(sink, clock, localTime),
          system(Region(surroundings.locale, surroundings.timeZone)),
          web(sink),
          preview(sink) {
        clock.setScheduled(notifications);
    }

    Ports ports() { return {alerts, windows, workspace, defaults, notifications, clock, system, web, preview, bundle}; }

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
};

}  // namespace kpx::test
