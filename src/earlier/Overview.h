#pragma once

#include "earlier/OfferedStates.h"
#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <filesystem>
#include <vector>

namespace kpx {

/// The states that can be brought back, newest first, each with its row of the table: "when" as a date, the number
/// of records of each kind, and "difference". A state equal to the present has none.
struct EarlierStates {
    std::vector<EarlierState> states;
    Records rows;
};
EarlierStates earlierStatesOf(const std::filesystem::path& dataFolder, const Environment& environment,
                              const LocalizedStrings& localized);

}  // namespace kpx
