#include "app/DosageChoices.h"

#include "core/Keys.h"

namespace kpx {

std::vector<std::string> numbersUpTo(int last) {
    std::vector<std::string> numbers;
    for (int number = 1; number <= last; ++number) {
        numbers.push_back(std::to_string(number));
    }
    return numbers;
}

std::vector<std::string> dosageForms() {
    return {"tablet",  "capsule",   "mL",     "drop",    "puff",        "spray",
            "patch",   "unit",      "mg",     "gram",    "teaspoon",    "tablespoon",
            "ampoule", "injection", "sachet", "lozenge", "suppository", "application"};
}

std::vector<std::string> timesToTake() {
    return {"day",
            "hours",
            "days",
            "weeks",
            "months",
            "in the morning",
            "at noon",
            "in the evening",
            "at bedtime",
            "with food",
            "before meals",
            "after meals",
            "on an empty stomach",
            "as needed"};
}

std::vector<std::string> fillTypes() { return {fillTypeInitial, fillTypeRefill}; }

}  // namespace kpx
