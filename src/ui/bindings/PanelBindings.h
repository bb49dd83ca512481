#pragma once

#include "controls/Panels.h"
#include "controls/Receipt.h"
#include "controls/Steps.h"

#include <functional>

class QFrame;
class QMenu;
class QTabWidget;
class QWidget;

namespace kpx {

class FirstStepsView;
class PopoverFrame;
class ReceiptView;
class SheetDialog;

void bind(TabView& control, QTabWidget& widget);
/// The frame shows the bar's text in its first label.
void bind(Bar& control, QFrame& widget);
void bind(Steps& control, FirstStepsView& widget);
void bind(Sheet& control, SheetDialog& widget);
/// `widgetForControl` finds the widget that it is to hang from.
void bind(Popover& control, PopoverFrame& widget, std::function<QWidget*(const Control&)> widgetForControl);
void bind(Menu& control, QMenu& widget);
void bind(KPXReceiptView& control, ReceiptView& widget);

}  // namespace kpx
