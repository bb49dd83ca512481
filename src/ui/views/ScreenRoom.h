#pragma once

#include <QScreen>
#include <QWidget>

namespace kpx {

/// How large a window may be on its screen, which has a title bar to show too.
inline QSize roomOnScreen(const QWidget& window) {
    constexpr int titleHeight = 32;
    return window.screen()->availableSize() - QSize(0, titleHeight);
}

}  // namespace kpx
