#pragma once

namespace kpx {

/// Gives the open context menus and popovers of the window and its sheets to assistive technology, as children of the
/// window that they hang from. The toolkit's tree has no place for them.
void installAccessibleWindows();

}  // namespace kpx
