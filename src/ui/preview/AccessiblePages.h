#pragma once

namespace kpx {

/// From now on every view of pages is a text to those who have the screen read to them.
void installAccessiblePages();

}  // namespace kpx
