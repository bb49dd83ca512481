#pragma once

#include "region/LocalizedStrings.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kpx {

/// What the status line says of a fill once it is stored; the fill type as stored.
///
/// | stored                            | text                                       |
/// |-----------------------------------|--------------------------------------------|
/// | a refill, one refill left         | "Added 4417203, refill, 1 refill left"     |
/// | an initial fill, three left       | "Added 4417203, initial, 3 refills left"   |
/// | of another type (edited by hand)  | "Added 4417203, 0 refills left"            |
std::string addedText(std::string_view rxNumber, std::string_view fillType, std::int64_t refillsLeft,
                      const LocalizedStrings& localized);
/// The same beginning with "Changed".
std::string changedText(std::string_view rxNumber, std::string_view fillType, std::int64_t refillsLeft,
                        const LocalizedStrings& localized);

/// "Deleted 3 fills of 4417203". REQUIRES: at least one fill.
std::string deletedText(std::string_view rxNumber, std::size_t fills, const LocalizedStrings& localized);

}  // namespace kpx
