#pragma once

namespace kpx {

/// Gives the lists of pop-ups to assistive technology: choosing an item there is choosing it, as a click is. The
/// toolkit's own lists only move their selection.
void installAccessibleChoices();

}  // namespace kpx
