#pragma once

#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kpx {

enum class SearchDirection { Forward, Backward };

/// The next row that holds the text in what it shows under any of the columns, case and accents ignored. The
/// search begins behind the row `from` (before it, going backward), goes round at the end, and looks at that row
/// last; −1 begins at the first (or last) row. None when no row holds the text, and for an empty text.
std::optional<int> nextRowHolding(std::string_view text, const Records& rows, const std::vector<std::string>& columns,
                                  int from, SearchDirection direction, const Environment& environment,
                                  const LocalizedStrings& localized);

}  // namespace kpx
