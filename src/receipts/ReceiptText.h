#pragma once

#include "region/LocalizedStrings.h"

#include <string>
#include <string_view>

namespace kpx {

// What the receipt button and the popover say of a receipt; an empty name stands for one that is not known.

/// "slip.heic: cannot be shown"
std::string cannotBeShownText(std::string_view name, const LocalizedStrings& localized);
/// "slip.png: not found"
std::string notFoundText(std::string_view name, const LocalizedStrings& localized);
/// A whole sentence for the popover.
std::string cannotBeShownMessage(std::string_view name, const LocalizedStrings& localized);
std::string notFoundMessage(std::string_view name, const LocalizedStrings& localized);

}  // namespace kpx
