#include "ui/views/PopoverFrame.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

namespace kpx {

PopoverFrame::PopoverFrame(QWidget* parent) : QFrame(parent, Qt::Popup) {}

void PopoverFrame::showBeside(QWidget* anchor) {
    m_anchor = anchor;
    // A child of the window it hangs from, else it would open behind a sheet.
    setParent(anchor->window(), Qt::Popup);
    setAttribute(Qt::WA_NoMouseReplay, false);
    adjustSize();
    constexpr int gap = 4;
    const QPoint anchorTopLeft = anchor->mapToGlobal(QPoint(0, 0));
    const QRect screen = anchor->screen()->availableGeometry();
    QPoint position(anchorTopLeft.x() + anchor->width() + gap, anchorTopLeft.y() + (anchor->height() - height()) / 2);
    if (position.x() + width() > screen.right()) {
        position.setX(anchorTopLeft.x() - width() - gap);
    }
    position.setX(qBound(screen.left(), position.x(), qMax(screen.left(), screen.right() - width())));
    position.setY(qBound(screen.top(), position.y(), qMax(screen.top(), screen.bottom() - height())));
    move(position);
    show();
    if (QWidget* first = nextInFocusChain()) {
        first->setFocus(Qt::PopupFocusReason);
    }
}

void PopoverFrame::hideEvent(QHideEvent* event) {
    QFrame::hideEvent(event);
    Q_EMIT closed();
}

void PopoverFrame::mousePressEvent(QMouseEvent* event) {
    // A click elsewhere closes the popover and takes effect there; one on its anchor only closes it,
    // else it would open again at once.
    const bool onAnchor =
        m_anchor &&
        QRect(m_anchor->mapToGlobal(QPoint(0, 0)), m_anchor->size()).contains(event->globalPosition().toPoint());
    setAttribute(Qt::WA_NoMouseReplay, onAnchor);
    QFrame::mousePressEvent(event);
}

void PopoverFrame::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        hide();
        return;
    }
    QFrame::keyPressEvent(event);
}

void PopoverFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace kpx
