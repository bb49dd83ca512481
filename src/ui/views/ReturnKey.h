#pragma once

class QAbstractButton;
class QKeyEvent;
class QWidget;

namespace kpx {

bool isReturnKey(const QKeyEvent& event);

/// What Return presses while the widget has the focus: the widget itself where it is a button, but no box and no radio
/// button, which are turned on and not pressed. Null for any other; the widget may be null.
QAbstractButton* buttonForReturn(QWidget* focused);

}  // namespace kpx
