#pragma once

#include "ui/style/Colors.h"

class QApplication;

namespace kpx {

/// Gives the application its style; once, before the first window.
void installStyle(QApplication& application);

/// At once and in every window.
void showAppearance(QApplication& application, const Scheme& scheme);

/// How long the mouse rests before a tool tip appears.
void setToolTipDelay(QApplication& application, int milliseconds);

}  // namespace kpx
