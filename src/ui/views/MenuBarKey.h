#pragma once

class QMainWindow;

namespace kpx {

/// Lets F10 open the window's first menu, from which the arrows lead to the others.
void openMenuBarByKey(QMainWindow& window);

}  // namespace kpx
