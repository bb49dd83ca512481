#pragma once

#include "region/Environment.h"
#include "values/Record.h"

#include <string_view>

namespace kpx {

/// Replaces the stored YYYYMMDD text under the key by the date it denotes, in every record that has one.
void arrayToNSDate(Records& records, std::string_view forKey, const Environment& environment);

/// The inverse: dates back to their YYYYMMDD texts.
void arrayNSDateToString(Records& records, std::string_view forKey, const Environment& environment);

}  // namespace kpx
