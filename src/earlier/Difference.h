#pragma once

#include "earlier/HouseholdFiles.h"
#include "region/LocalizedStrings.h"

#include <array>
#include <cstddef>
#include <string>

namespace kpx {

/// What bringing back an earlier list would do to the present one.
struct FileDifference {
    std::size_t added = 0;
    std::size_t removed = 0;
    std::size_t changed = 0;
    bool operator==(const FileDifference&) const = default;
};

/// Pairs the records of both by what identifies them, and of several alike the equal ones first. What then has
/// no partner is added or removed, what differs from its partner is changed. The order makes no difference.
FileDifference differenceOf(const HouseholdFile& file, const Records& present, const Records& earlier);

/// "+3 fills, −1 patient, 2 changed": by kind, what is added before what is removed, and all that is changed in
/// one sum. Empty when there is no difference.
std::string differenceText(const std::array<FileDifference, householdFileCount>& differences,
                           const LocalizedStrings& localized);

}  // namespace kpx
