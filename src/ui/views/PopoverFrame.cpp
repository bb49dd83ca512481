#include "ui/views/PopoverFrame.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

namespace kpx {

namespace {

/// A pop-up takes all of the mouse while it is open: nothing could be dragged out of another program.
Qt::WindowFlags flagsFor(PopoverFrame::Closing closing) {
    return closing == PopoverFrame::Closing::ActElsewhere ? Qt::WindowFlags(Qt::Popup)
                                                          : Qt::Tool | Qt::FramelessWindowHint;
}

/// The button in the open at that place; null for none, for one behind a sheet and for one in the popover.
QAbstractButton* buttonAt(const QPoint& globalPosition) {
    auto* button = qobject_cast<QAbstractButton*>(QApplication::widgetAt(globalPosition));
    const QWidget* sheet = QApplication::activeModalWidget();
    const bool isReachable =
        button && button->window()->windowType() != Qt::Popup && (!sheet || button->window() == sheet->window());
    return isReachable ? button : nullptr;
}

/// Whether the widget is in the window, or in one that was opened from it. Their places on the screen do not tell, as
/// not every desktop does.
bool belongsTo(const QWidget& widget, const QWidget* window) {
    const QWidget* at = &widget;
    while (at && at != window) {
        at = at->parentWidget();
    }
    return at;
}

}  // namespace

PopoverFrame::PopoverFrame(QWidget* parent, Closing closing)
    : QFrame(parent, flagsFor(closing)), m_flags(flagsFor(closing)) {}

void PopoverFrame::showBeside(QWidget* anchor) {
    m_anchor = anchor;
    // A child of the window it hangs from, else it would open behind a sheet.
    setParent(anchor->window(), m_flags);
    setAttribute(Qt::WA_NoMouseReplay, false);
    adjustSize();
    constexpr int gap = 4;
    const QPoint anchorTopLeft = anchor->mapToGlobal(QPoint(0, 0));
    const QRect screen = anchor->screen()->availableGeometry();
    const int right = anchorTopLeft.x() + anchor->width() + gap;
    const int left = anchorTopLeft.x() - width() - gap;
    // Where reading goes on, and on the other side only where there is no room.
    const bool isOnTheLeft = isRightToLeft() ? left >= screen.left() : right + width() > screen.right();
    QPoint position(isOnTheLeft ? left : right, anchorTopLeft.y() + (anchor->height() - height()) / 2);
    position.setX(qBound(screen.left(), position.x(), qMax(screen.left(), screen.right() - width())));
    position.setY(qBound(screen.top(), position.y(), qMax(screen.top(), screen.bottom() - height())));
    move(position);
    show();
    raise();
    // An alert that came up at the same time must not lie beneath.
    QWidget* sheet = QApplication::activeModalWidget();
    if (sheet && sheet != anchor->window()) {
        sheet->raise();
        sheet->activateWindow();
        return;
    }
    if (windowType() == Qt::Tool) {
        activateWindow();
    }
    if (QWidget* first = nextInFocusChain()) {
        first->setFocus(Qt::PopupFocusReason);
    }
}

void PopoverFrame::showEvent(QShowEvent* event) {
    QFrame::showEvent(event);
    if (windowType() == Qt::Tool) {
        qApp->installEventFilter(this);
    }
}

bool PopoverFrame::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            return watched->isWidgetType() &&
                   pressedElsewhere(static_cast<QWidget&>(*watched), static_cast<QMouseEvent&>(*event));
        case QEvent::KeyPress:
            return watched->isWidgetType() && escapePressedBeneath(*watched, static_cast<QKeyEvent&>(*event));
        case QEvent::Hide:
            if (watched == m_anchor) {
                hide();
            }
            return false;
        case QEvent::Move:
        case QEvent::Resize:
            if (watched == parent()) {
                hide();
            }
            return false;
        default:
            return false;
    }
}

bool PopoverFrame::anchorContains(const QPoint& globalPosition) const {
    return m_anchor && QRect(m_anchor->mapToGlobal(QPoint(0, 0)), m_anchor->size()).contains(globalPosition);
}

bool PopoverFrame::pressedElsewhere(const QWidget& target, const QMouseEvent& event) {
    const QWidget* sheet = QApplication::activeModalWidget();
    const bool onSheet = sheet && sheet != parent() && belongsTo(target, sheet);
    if (belongsTo(target, this) || onSheet) {
        return false;
    }
    hide();
    return anchorContains(event.globalPosition().toPoint());
}

bool PopoverFrame::escapePressedBeneath(const QObject& target, const QKeyEvent& event) {
    const bool isBeneath = static_cast<const QWidget&>(target).window() == parent();
    if (!isBeneath || event.key() != Qt::Key_Escape || QApplication::activePopupWidget()) {
        return false;
    }
    hide();
    return true;
}

void PopoverFrame::hideEvent(QHideEvent* event) {
    qApp->removeEventFilter(this);
    QFrame::hideEvent(event);
    Q_EMIT closed();
}

void PopoverFrame::mousePressEvent(QMouseEvent* event) {
    // A click elsewhere closes the popover and takes effect there; one on its anchor only closes it,
    // else it would open again at once.
    const QPoint position = event->globalPosition().toPoint();
    QAbstractButton* button = buttonAt(position);
    setAttribute(Qt::WA_NoMouseReplay, anchorContains(position) || button);
    QFrame::mousePressEvent(event);
    if (button && !anchorContains(position)) {
        // It would be sent the press, but never the release, and hang there pressed.
        QMetaObject::invokeMethod(button, &QAbstractButton::click, Qt::QueuedConnection);
    }
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
