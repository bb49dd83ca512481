#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

// The program is linked so that its calls of the system come here first. They are counted, and one of them can be
// made to fail, to do half of its work, or to be the last that the process makes.

namespace kpx::faults {

enum class Fault {
    None,
    Error,       ///< the call fails with a given error
    Short,       ///< a read or write does half of its bytes
    KillBefore,  ///< the process is killed before the call has any effect
    KillWithin,  ///< half of the bytes of a write, then the kill
    KillAfter,
};

struct Plan {
    std::size_t call = 0;  ///< counted from 0
    Fault fault = Fault::None;
    int error = 0;
};

/// One call as it was made, and what can befall it.
struct Call {
    std::string name;
    std::vector<Plan> faults;
};

/// Runs the work with its calls counted and the plan carried out; answers the calls.
std::vector<Call> counted(const Plan& plan, const std::function<void()>& work);

}  // namespace kpx::faults
