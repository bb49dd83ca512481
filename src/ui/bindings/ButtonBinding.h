#pragma once

#include "controls/Button.h"
#include "controls/Receipt.h"

#include <functional>

class QAbstractButton;
class QAction;

namespace kpx {

class DropButton;

/// `beforeClick` ends what the user is editing elsewhere: a shortcut or a menu takes no focus away.
void bind(Button& control, QAbstractButton& widget, std::function<void()> beforeClick);
void bind(Button& control, QAction& widget, std::function<void()> beforeClick);
void bind(KPXDropButton& control, DropButton& widget, std::function<void()> beforeClick);

}  // namespace kpx
