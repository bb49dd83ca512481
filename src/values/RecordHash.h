#pragma once

#include "values/Record.h"

#include <cstddef>

namespace kpx {

/// The same for equal records, whatever the order of their keys.
std::size_t hashOf(const Record& record);

}  // namespace kpx
