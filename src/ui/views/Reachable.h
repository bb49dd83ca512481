#pragma once

class QWidget;

namespace kpx {

/// Whether the widget is seen and no sheet or alert lies before it. The mouse and the keys find out by themselves; an
/// act of assistive technology comes in through every window.
bool isReachable(const QWidget& widget);

}  // namespace kpx
