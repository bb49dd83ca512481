#pragma once

#include <string>
#include <vector>

namespace kpx {

// What the dosage pop-ups of the entry form offer. The titles are what records store, so they are not
// translated.

/// "1", "2", … up to the number.
std::vector<std::string> numbersUpTo(int last);
std::vector<std::string> dosageForms();
std::vector<std::string> timesToTake();
std::vector<std::string> fillTypes();

}  // namespace kpx
