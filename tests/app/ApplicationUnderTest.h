#pragma once

#include "app/KPXAppDelegate.h"
#include "core/DataFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestPlatform.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace kpx::test {

/// The controller on a platform of doubles, called without an interface between.
struct ApplicationUnderTest {
    explicit ApplicationUnderTest(const std::string& locale = "en_US")
        : platform({regionOf(locale, "UTC"), home.path() / "data", home.path() / "config"},
                   [this](const Json& event) { events.push_back(event); }),
          controller(platform.ports()) {}

    void write(const Records& records, std::string_view file) { EXPECT_TRUE(controller.writeArray(records, file)); }
    Records read(std::string_view file) { return controller.copyArrayFromDataFile(file).value_or(Records()); }

    /// "alert TITLE / MESSAGE", "beep", "terminate" and so on, since the last time this was asked.
    std::string happened() {
        std::string text;
        for (const Json& event : std::exchange(events, {})) {
            text += text.empty() ? "" : "; ";
            text += event["event"].get<std::string>();
            for (const char* detail : {"message", "informative", "control", "name", "text", "target"}) {
                if (event.contains(detail) && !event[detail].get<std::string>().empty()) {
                    text += " [" + event[detail].get<std::string>() + "]";
                }
            }
        }
        return text;
    }

    TemporaryFolder home;
    std::vector<Json> events;
    TestPlatform platform;
    KPXAppDelegate controller;
};

}  // namespace kpx::test
