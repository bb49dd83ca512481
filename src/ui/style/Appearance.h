#pragma once

#include "ui/style/Colors.h"

#include <string_view>

class QApplication;

namespace kpx {

/// Gives the application its style; once, before the first window, which will speak that language.
void installStyle(QApplication& application, std::string_view languageCode);

/// At once and in every window.
void showAppearance(QApplication& application, const Scheme& scheme);

/// How long the mouse rests before a tool tip appears.
void setToolTipDelay(QApplication& application, int milliseconds);

}  // namespace kpx
