#pragma once

#include "drawing/Document.h"

#include <vector>

namespace kpx {

/// The texts of a page as they are read, line after line from above, each line from the left; empty ones are
/// left out. Valid as long as the page is.
std::vector<std::vector<const DrawText*>> linesInReadingOrder(const Page& page);

}  // namespace kpx
