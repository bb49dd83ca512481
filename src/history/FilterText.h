#pragma once

#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Date.h"

#include <optional>
#include <string>

namespace kpx {

/// By what the history's rows were narrowed; what is absent did not narrow them.
struct HistoryFilter {
    std::optional<std::string> patient;
    std::optional<std::string> drug;
    int scriptType = 0;  ///< a tag of the fill-type radio group
    Date begin;
    Date end;
};

/// The parts of the filter in words: "Ann Holloway · Refill · 1/1/26 – 11/22/26".
std::string filterText(const HistoryFilter& filter, const Environment& environment, const LocalizedStrings& localized);

}  // namespace kpx
