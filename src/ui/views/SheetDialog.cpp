#include "ui/views/SheetDialog.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QShowEvent>

namespace kpx {

SheetDialog::SheetDialog(QWidget* parent) : QDialog(parent) { setWindowModality(Qt::WindowModal); }

void SheetDialog::reject() {
    for (QAbstractButton* button : findChildren<QAbstractButton*>()) {
        if (button->objectName().startsWith(QStringLiteral("closeBtn"))) {
            button->click();
            return;
        }
    }
    QDialog::reject();
}

void SheetDialog::endSheet() { QDialog::reject(); }

void SheetDialog::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        if (QWidget* first = firstField()) {
            first->setFocus(Qt::TabFocusReason);
        }
    }
    if (!m_wasShown) {
        m_wasShown = true;
        // Only now, so that what the buttons do is done before.
        for (QAbstractButton* button : findChildren<QAbstractButton*>()) {
            const QString name = button->objectName();
            if (name.startsWith(QStringLiteral("addBtn")) || name.startsWith(QStringLiteral("changeBtn"))) {
                connect(button, &QAbstractButton::clicked, this, &SheetDialog::returnToAnEmptyFirstField);
            }
        }
    }
    QDialog::showEvent(event);
}

QWidget* SheetDialog::firstField() const {
    for (QWidget* widget = nextInFocusChain(); widget && widget != this; widget = widget->nextInFocusChain()) {
        if (widget->focusPolicy() & Qt::TabFocus && widget->isEnabledTo(this) && widget->window() == this) {
            return widget;
        }
    }
    return nullptr;
}

void SheetDialog::returnToAnEmptyFirstField() {
    if (auto* first = qobject_cast<QLineEdit*>(firstField()); first && first->text().isEmpty()) {
        first->setFocus(Qt::OtherFocusReason);
    }
}

}  // namespace kpx
