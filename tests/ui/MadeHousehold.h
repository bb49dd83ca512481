#pragma once

#include <cstddef>
#include <filesystem>

namespace kpx::test {

/// Puts a household into the data folder of this run; only within throw-away folders.
///
/// The small one is a family of three with a year of fills up to today, some of them overdue, one expired,
/// some names long. The large one has made-up names and as many fills as asked for.
void writeSmallHousehold();
void writeLargeHousehold(std::size_t fillCount);
/// Removes the data folder: the next start is a first start.
void removeHousehold();

/// The data folder of this run.
std::filesystem::path dataFolder();

}  // namespace kpx::test
