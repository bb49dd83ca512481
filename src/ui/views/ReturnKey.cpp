#include "ui/views/ReturnKey.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

namespace kpx {

bool isReturnKey(const QKeyEvent& event) { return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter; }

QAbstractButton* buttonForReturn(QWidget* focused) {
    const bool isPressed = qobject_cast<QPushButton*>(focused) || qobject_cast<QToolButton*>(focused);
    return isPressed ? qobject_cast<QAbstractButton*>(focused) : nullptr;
}

}  // namespace kpx
