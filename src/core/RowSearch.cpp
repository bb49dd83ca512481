#include "core/RowSearch.h"

#include "core/CellText.h"
#include "core/TextPattern.h"

#include <algorithm>

namespace kpx {

std::optional<int> nextRowHolding(std::string_view text, const Records& rows, const std::vector<std::string>& columns,
                                  int from, SearchDirection direction, const Environment& environment,
                                  const LocalizedStrings& localized) {
    if (text.empty()) {
        return std::nullopt;
    }
    const FoldedText sought(text);
    const auto holdsIt = [&](const Record& row) {
        return std::ranges::any_of(columns, [&](const std::string& column) {
            const Value* value = row.find(column);
            return value && sought.isIn(shownText(column, *value, environment, localized));
        });
    };
    const int count = static_cast<int>(rows.size());
    const bool forward = direction == SearchDirection::Forward;
    const int start = from < 0 || from >= count ? (forward ? -1 : count) : from;
    for (int step = 1; step <= count; ++step) {
        const int row = (start + (forward ? step : count - step)) % count;
        if (holdsIt(rows[static_cast<std::size_t>(row)])) {
            return row;
        }
    }
    return std::nullopt;
}

}  // namespace kpx
