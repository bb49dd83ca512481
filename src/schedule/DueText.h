#pragma once

#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <string>

namespace kpx {

/// How many refills of the whole history are due, as the overdue view would list them, and how many of these since a
/// day before today.
///
/// | due | before today | text                                 |
/// |-----|--------------|--------------------------------------|
/// | 0   | 0            | "Nothing is due."                    |
/// | 1   | 0            | "1 refill is due"                    |
/// | 3   | 1            | "3 refills are due, 1 is overdue"    |
/// | 3   | 3            | "3 refills are due, 3 are overdue"   |
std::string dueText(const Records& history, const Environment& environment, const LocalizedStrings& localized);

}  // namespace kpx
