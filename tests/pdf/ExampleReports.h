#pragma once

#include "drawing/Document.h"
#include "values/Record.h"

#include <cstddef>

namespace kpx::test {

/// A report of that type on a made household: the history of `fillCount` fills, or the list of as many
/// entries. Dates are those of a reader in the United States on 5 March 2024.
Document exampleReport(int type, std::size_t recordCount);

}  // namespace kpx::test
