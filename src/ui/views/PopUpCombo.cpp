#include "ui/views/PopUpCombo.h"

#include "ui/views/AccessibleChoices.h"
#include "ui/views/Reachable.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QCursor>
#include <QHelpEvent>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QToolTip>
#include <QWheelEvent>

namespace kpx {

PopUpCombo::PopUpCombo(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(6);
    setMaxVisibleItems(16);
    view()->setTextElideMode(Qt::ElideMiddle);
    // By default the wheel would take the focus.
    setFocusPolicy(Qt::StrongFocus);
    installAccessibleChoices();
}

void PopUpCombo::showPopup() {
    if (!isReachable(*this)) {
        return;
    }
    // Wide enough for the names, within reason.
    constexpr int widest = 520;
    const int contents = view()->sizeHintForColumn(0) + 32;
    view()->setMinimumWidth(qBound(width(), contents, qMax(width(), widest)));
    QComboBox::showPopup();
}

void PopUpCombo::chooseItem(int index) {
    hidePopup();
    if (isEnabled()) {
        setCurrentIndex(index);
        Q_EMIT activated(index);
    }
}

bool PopUpCombo::event(QEvent* event) {
    if (event->type() == QEvent::Polish && accessibleDescription().isEmpty()) {
        // For assistive technology its name is what it stands on; this tells what it is for.
        setAccessibleDescription(accessibleName());
        view()->setAccessibleName(accessibleName());
    }
    if (event->type() == QEvent::WindowActivate) {
        forgetMouse();
    }
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && isTextElided()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), currentText(), this);
        return true;
    }
    return QComboBox::event(event);
}

void PopUpCombo::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_Space:
        case Qt::Key_F4:
            showPopup();
            return;
        default:
            break;
    }
    const bool isPlain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    if (isPlain && !event->text().isEmpty() && event->text().at(0).isPrint()) {
        showPopup();
        QCoreApplication::sendEvent(view(), event);
        return;
    }
    event->ignore();
}

void PopUpCombo::wheelEvent(QWheelEvent* event) { event->ignore(); }

void PopUpCombo::forgetMouse() {
    // The pointer may have left while a sheet lay over the window, and nobody told.
    if (!rect().contains(mapFromGlobal(QCursor::pos()))) {
        setAttribute(Qt::WA_UnderMouse, false);
        QHoverEvent left(QEvent::HoverLeave, QPointF(-1, -1), QPointF(-1, -1), QPointF(-1, -1));
        QCoreApplication::sendEvent(this, &left);
        update();
    }
}

bool PopUpCombo::isTextElided() const {
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return fontMetrics().horizontalAdvance(currentText()) > field.width();
}

}  // namespace kpx
