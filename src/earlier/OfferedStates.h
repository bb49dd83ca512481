#pragma once

#include "earlier/Beginnings.h"
#include "earlier/FileContent.h"
#include "region/Environment.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace kpx {

/// The household as it stood at an instant: of each file the last content written at or before it.
struct EarlierState {
    /// When the last of its contents was written.
    std::int64_t when = 0;
    /// In the order of householdFiles(); none where there was no such file.
    std::array<std::optional<FileContent>, householdFileCount> contents;
};

/// What can be brought back, newest first, each state once: the kept instants and the one before each Delete,
/// as far as all their contents are kept. The present is none of them. Where nothing is known of the beginnings, a file
/// of which nothing older is kept is taken for one that did not exist.
std::vector<EarlierState> offeredStates(const HouseholdContents& contents, const std::optional<Beginnings>& beginnings,
                                        const Environment& environment);

}  // namespace kpx
