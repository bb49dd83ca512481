#pragma once

#include <string>
#include <vector>

namespace kpx::faults {

/// What an action finds: the household, the same without its earlier states, or nothing at all.
enum class Found { Household, WithoutEarlierStates, Nothing };

/// Something a user does that writes, in the runner's words.
struct Action {
    std::string name;
    std::vector<std::string> before;  ///< until the form stands
    std::vector<std::string> act;     ///< what writes
    Found found = Found::Household;
};

/// A small household that has been changed before, so that there are earlier states.
const std::vector<std::string>& madeHousehold();

/// All that writes a data file.
const std::vector<Action>& writingActions();

/// A start, and an addition to each of the five files.
const std::vector<std::string>& startAndWriteAll();

}  // namespace kpx::faults
