#include "history/ChangeAndDelete.h"

#include "core/Keys.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

namespace kpx {

namespace {

constexpr std::array<const char*, 3> prescriptionKeys = {MHRxNumberKey, MHPharmacyKey, MHPatientKey};
constexpr std::array<const char*, 5> fillKeys = {MHRxNumberKey, MHPharmacyKey, MHPatientKey, MHFillTypeKey,
                                                 MHDispenseDateKey};

/// A key that neither record has counts as equal: hand-edited records can be changed and deleted too.
bool equalUnder(std::span<const char* const> keys, const Record& left, const Record& right) {
    return std::ranges::all_of(keys, [&](const char* key) {
        const Value* first = left.find(key);
        const Value* second = right.find(key);
        return first && second ? *first == *second : first == second;
    });
}

}  // namespace

std::optional<std::size_t> copyFilterArrayAndRetain(const Records& history, const Record& usingTableRowDict) {
    const auto record = std::ranges::find_if(
        history, [&](const Record& candidate) { return equalUnder(fillKeys, candidate, usingTableRowDict); });
    return record == history.end() ? std::nullopt : std::optional(static_cast<std::size_t>(record - history.begin()));
}

Records copyFilterBasedOnRxPharmPatient(const Records& history, const Record& usingTableRowDict) {
    Records group;
    std::ranges::copy_if(history, std::back_inserter(group), [&](const Record& candidate) {
        return equalUnder(prescriptionKeys, candidate, usingTableRowDict);
    });
    return group;
}

std::optional<std::vector<std::size_t>> positionsOfGroup(const Records& history, const Records& group) {
    std::vector<std::size_t> positions;
    auto behind = history.begin();
    for (const Record& record : group) {
        const auto found = std::find(behind, history.end(), record);
        if (found == history.end()) {
            return std::nullopt;
        }
        positions.push_back(static_cast<std::size_t>(found - history.begin()));
        behind = found + 1;
    }
    return positions;
}

void removePositions(Records& history, const std::vector<std::size_t>& positions) {
    Records kept;
    kept.reserve(history.size() - positions.size());
    auto next = positions.begin();
    for (std::size_t position = 0; position < history.size(); ++position) {
        if (next != positions.end() && *next == position) {
            ++next;
        } else {
            kept.push_back(std::move(history[position]));
        }
    }
    history = std::move(kept);
}

bool hasWrongDataBeenChanged(const InputArray& input, const Record& comparingDict) {
    const auto differs = [&](const char* key, const std::string& typed) {
        return comparingDict.text(key).value_or("").string() != typed;
    };
    return differs(MHPatientKey, input.patient) || differs(MHPharmacyKey, input.pharmacy) ||
           differs(MHDrugKey, input.drug) || differs(MHPrescriberKey, input.prescriber) ||
           differs(MHRxNumberKey, input.rxNumber) || comparingDict.integer(MHDaysSupplyKey) != input.daysSupply ||
           comparingDict.integer(MHRefillsKey) != input.initialRefills;
}

}  // namespace kpx
