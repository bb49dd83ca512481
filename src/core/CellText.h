#pragma once

#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <string>
#include <string_view>
#include <vector>

namespace kpx {

/// What a table shows for a value of the column: dates in short style, an instant with its time of day, costs grouped
/// with two decimals, the words of records in the user's language.
std::string shownText(std::string_view column, const Value& value, const Environment& environment,
                      const LocalizedStrings& localized);

/// The row's cells in the order of the columns, with tabs between them; line breaks and tabs within become blanks.
std::string rowAsText(const Record& row, const std::vector<std::string>& columns, const Environment& environment,
                      const LocalizedStrings& localized);

/// The same as a table in HTML, the titles above the cells. REQUIRES: as many titles as columns.
std::string rowAsTable(const Record& row, const std::vector<std::string>& columns,
                       const std::vector<std::string>& titles, const Environment& environment,
                       const LocalizedStrings& localized);

}  // namespace kpx
