#include "ui/views/FindField.h"

#include "ui/style/Colors.h"

#include <QEvent>
#include <QKeyEvent>

#include <limits>

namespace kpx {

FindField::FindField(QWidget* table) : QLineEdit(table) {
    setMaxLength(std::numeric_limits<int>::max());
    setProperty("ownedByWindow", true);
    setAccessibleName(tr("Find"));
    setPlaceholderText(tr("Find"));
    setClearButtonEnabled(false);
    table->installEventFilter(this);
    hide();
}

void FindField::open() {
    place();
    showFound(true);
    show();
    raise();
    setFocus(Qt::ShortcutFocusReason);
    selectAll();
}

void FindField::place() {
    constexpr int gap = 8;
    constexpr int usualWidth = 260;
    const QWidget* table = parentWidget();
    const int width = qMin(usualWidth, table->width() - 2 * gap);
    const int x = layoutDirection() == Qt::RightToLeft ? gap : table->width() - width - gap;
    // Over the titles of columns, so that it hides no row that it finds.
    setGeometry(x, 1, width, sizeHint().height());
}

void FindField::showFound(bool found) {
    QPalette colors;
    if (!found) {
        colors.setColor(QPalette::Text, warningRed(palette()));
    }
    setPalette(colors);
    setAccessibleDescription(found ? QString() : tr("Not found"));
}

void FindField::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            hide();
            parentWidget()->setFocus(Qt::OtherFocusReason);
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT goOn(!event->modifiers().testFlag(Qt::ShiftModifier));
            return;
        default:
            QLineEdit::keyPressEvent(event);
    }
}

void FindField::hideEvent(QHideEvent* event) {
    showFound(true);
    QLineEdit::hideEvent(event);
}

bool FindField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && isVisible()) {
        place();
    }
    return QLineEdit::eventFilter(watched, event);
}

}  // namespace kpx
