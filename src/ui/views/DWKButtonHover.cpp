#include "ui/views/DWKButtonHover.h"

#include "ui/style/Strokes.h"

#include <QEnterEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QStyleOptionToolButton>

namespace kpx {

DWKButtonHover::DWKButtonHover(QWidget* parent) : QToolButton(parent) {
    updateTrackingAreas();
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

void DWKButtonHover::enterEvent(QEnterEvent* event) {
    QToolButton::enterEvent(event);
    mouseEntered();
}

void DWKButtonHover::leaveEvent(QEvent* event) {
    QToolButton::leaveEvent(event);
    mouseExited();
}

void DWKButtonHover::initStyleOption(QStyleOptionToolButton* option) const {
    QToolButton::initStyleOption(option);
    option->state.setFlag(QStyle::State_MouseOver,
                          m_highlighted && isEnabled() && QGuiApplication::applicationState() == Qt::ApplicationActive);
}

void DWKButtonHover::paintEvent(QPaintEvent* event) {
    QToolButton::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        drawBox(painter, rect(), Qt::transparent, Qt::transparent, true, palette().color(QPalette::Highlight));
    }
}

void DWKButtonHover::updateTrackingAreas() { setAttribute(Qt::WA_Hover); }

void DWKButtonHover::mouseEntered() {
    m_highlighted = true;
    update();
}

void DWKButtonHover::mouseExited() {
    m_highlighted = false;
    update();
}

void DWKButtonHover::cursorUpdate() {
    if (isEnabled()) {
        setCursor(Qt::PointingHandCursor);
    } else {
        unsetCursor();
    }
}

}  // namespace kpx
