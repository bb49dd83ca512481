#include "history/RefillAccounting.h"

#include "core/Keys.h"
#include "core/PopUpTitles.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace kpx {

std::variant<AddRefusal, AddPlan> planAddition(const Records& history, const InputArray& input,
                                               const std::string& fillType, const LocalizedStrings& localized) {
    const Record initial =
        copyFindDictInArray(history, {MHRxNumberKey, input.rxNumber}, {MHFillTypeKey, fillTypeInitial},
                            {MHPharmacyKey, input.pharmacy}, {MHPatientKey, input.patient});
    if (fillType == fillTypeInitial) {
        if (!initial.empty()) {
            return AddRefusal{
                formatted(localized("Rx Number: \"%@\"\rfor: %@\rat: %@\rexists already in Prescription History"),
                          {input.rxNumber, input.patient, input.pharmacy}),
                localized("Duplicate Rx Numbers for the same patient at the same pharmacy not allowed. If this is a "
                          "refill, please adjust fill type and try again, Thank you")};
        }
        return AddPlan{input.initialRefills, std::nullopt};
    }
    if (initial.empty()) {
        return AddRefusal{
            formatted(
                localized("Refills cannot be added until an 'initial' prescription is added for\rRx Number: \"%@\"\r"),
                {input.rxNumber}),
            localized("If this is the initial prescription, please adjust fill type and try again, Thank you")};
    }
    const std::int64_t remaining = initial.integer(MHRefillsRemainKey);
    if (remaining == 0) {
        return AddRefusal{formatted(localized("Refill not added\rfor Rx Number: \"%@\""), {input.rxNumber}),
                          localized("No Remaining Refills")};
    }
    const auto position = std::ranges::find(history, initial) - history.begin();
    // The lowest count there is, which a file edited by hand can hold, stays.
    const bool lowest = remaining == std::numeric_limits<std::int64_t>::min();
    return AddPlan{lowest ? remaining : remaining - 1, static_cast<std::size_t>(position)};
}

void setRemainingRefills(Records& history, std::size_t position, std::int64_t remaining) {
    history[position].set(MHRefillsRemainKey, remaining);
}

}  // namespace kpx
