#pragma once

#include "history/InputFields.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <optional>
#include <string>
#include <variant>

namespace kpx {

/// Why a fill cannot be added.
struct AddRefusal {
    std::string title;
    std::string message;
};

/// What adding a fill does to the history before the fill itself is appended.
struct AddPlan {
    /// Left after this fill; stored with it.
    std::int64_t refillsRemaining = 0;
    /// For a refill, where its initial fill stands; that record's count is lowered too.
    std::optional<std::size_t> initialPosition;
};

/// Decides over adding a fill. A prescription is known by Rx number, pharmacy and patient, not by its
/// drug. An "Initial" fill must be the first of its prescription and starts with all its refills; any
/// other fill type is a refill, which needs an initial fill with refills left and takes one of them.
std::variant<AddRefusal, AddPlan> planAddition(const Records& history, const InputArray& input,
                                               const std::string& fillType, const LocalizedStrings& localized);

/// The history with the initial fill's remaining refills set.
void setRemainingRefills(Records& history, std::size_t position, std::int64_t remaining);

}  // namespace kpx
