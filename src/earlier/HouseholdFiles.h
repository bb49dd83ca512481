#pragma once

#include "core/DataFiles.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace kpx {

/// One of the five data files, as earlier states see it.
struct HouseholdFile {
    std::string_view name;
    /// Records of two states that agree in these are one thing, changed at most.
    std::vector<std::string_view> pairedBy;
    std::string_view count;       ///< the column of its number of records
    std::string_view one;         ///< "%@ fill", for one of them
    std::string_view several;     ///< "%@ fills"
    std::string_view unreadable;  ///< what is said of it when it is damaged
};

inline constexpr std::size_t householdFileCount = 5;

/// In the order in which differences are told: fills, patients, drugs, pharmacies, prescribers.
const std::array<HouseholdFile, householdFileCount>& householdFiles();

/// Where the file stands in the list; its end for any other name.
std::size_t householdFileNamed(std::string_view name);

/// The records of a household, in the order of householdFiles().
using Household = std::array<Records, householdFileCount>;

}  // namespace kpx
