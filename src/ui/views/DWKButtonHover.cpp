#include "ui/views/DWKButtonHover.h"

#include <QEvent>

namespace kpx {

DWKButtonHover::DWKButtonHover(QWidget* parent) : QToolButton(parent) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setAutoRaise(true);
    setIconSize(QSize(20, 20));
    cursorUpdate();
}

void DWKButtonHover::changeEvent(QEvent* event) {
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        cursorUpdate();
    }
}

void DWKButtonHover::cursorUpdate() {
    if (isEnabled()) {
        setCursor(Qt::PointingHandCursor);
    } else {
        unsetCursor();
    }
}

}  // namespace kpx
