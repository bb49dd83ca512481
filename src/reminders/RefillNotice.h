#pragma once

#include "region/Environment.h"
#include "reminders/ReminderFolder.h"
#include "schedule/RefillsToOrder.h"

#include <filesystem>
#include <optional>

namespace kpx {

/// Where the standing reminder finds what it speaks of and how it says it.
struct RefillSources {
    std::filesystem::path dataFolder;
    std::filesystem::path resources;  ///< holds the "<lang>.lproj" folders
};

/// What the standing reminder has to say.
struct RefillNotice {
    /// False when the history cannot be read at this moment: to be asked again.
    bool isKnown = true;
    /// None when no prescription reaches its day; a damaged or missing history says nothing.
    std::optional<RefillsToOrder> refills = std::nullopt;
};

/// Now: for the latest due day, and for the days since the last that it was said for.
RefillNotice refillNotice(const Reminder& standing, int lead, const ReminderFolder& reminders, LocalTime now,
                          const RefillSources& sources, const Region& region);

/// The calendar day of an instant in the region's zone, and the start of a day there.
LocalDay dayOfDate(Date date, const Region& region);
Date dateOfDay(LocalDay day, const Region& region);

}  // namespace kpx
