#pragma once

class QApplication;

namespace kpx {

/// Gives the application its style; once, before the first window.
void installStyle(QApplication& application);

/// Light or dark, at once and in every window.
void showAppearance(QApplication& application, bool dark);

/// How long the mouse rests before a tool tip appears.
void setToolTipDelay(QApplication& application, int milliseconds);

}  // namespace kpx
