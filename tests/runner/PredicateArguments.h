#pragma once

#include "tests/support/LocalTime.h"
#include "values/Record.h"

#include <string>
#include <vector>

namespace kpx::runner {

/// The words of a script as a predicate's arguments. A word is a text, unless the key that its "%@" is
/// compared with holds dates or numbers in the records: then it is a date or a number, if it reads as
/// one. So a written date compares with date values, and digits with texts of digits.
std::vector<Value> predicateArguments(const std::string& format, const std::vector<std::string>& words,
                                      const Records& records, const test::LocalTime& localTime);

}  // namespace kpx::runner
