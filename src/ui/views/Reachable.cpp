#include "ui/views/Reachable.h"

#include <QApplication>
#include <QWidget>

namespace kpx {

namespace {

/// Across windows.
bool liesIn(const QWidget* widget, const QWidget* ancestor) {
    while (widget && widget != ancestor) {
        widget = widget->parentWidget();
    }
    return widget != nullptr;
}

}  // namespace

bool isReachable(const QWidget& widget) {
    if (!widget.isVisible()) {
        return false;
    }
    const QWidget* modal = QApplication::activeModalWidget();
    if (!modal || liesIn(&widget, modal)) {
        return true;
    }
    return modal->windowModality() != Qt::ApplicationModal && !liesIn(modal, widget.window());
}

}  // namespace kpx
