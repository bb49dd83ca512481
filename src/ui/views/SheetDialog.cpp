#include "ui/views/SheetDialog.h"

#include "controls/Alert.h"
#include "ui/Conversions.h"
#include "ui/views/AlertBox.h"
#include "ui/views/ReturnKey.h"

#include <QAbstractSpinBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>

#include <algorithm>

namespace kpx {

SheetDialog::SheetDialog(QWidget* parent) : QDialog(parent) { setWindowModality(Qt::WindowModal); }

void SheetDialog::keyPressEvent(QKeyEvent* event) {
    if (!isReturnKey(*event)) {
        QDialog::keyPressEvent(event);
        return;
    }
    QAbstractButton* pressed = buttonForReturn(focusWidget());
    if (!pressed) {
        const auto buttons = findChildren<QPushButton*>();
        const auto main = std::ranges::find_if(
            buttons, [](const QPushButton* button) { return button->property("accent").toBool(); });
        pressed = main == buttons.end() ? nullptr : *main;
    }
    if (pressed) {
        pressed->click();
    }
}

bool SheetDialog::holdsTypedText() const {
    const auto fields = findChildren<QLineEdit*>();
    return std::ranges::any_of(fields, [](const QLineEdit* field) {
        return field->isVisible() && !field->isReadOnly() && field->isModified() && !field->text().isEmpty() &&
               !field->property("ownedByWindow").toBool() && !qobject_cast<QAbstractSpinBox*>(field->parentWidget());
    });
}

bool SheetDialog::userGivesUpTypedText() {
    Alert alert;
    alert.messageText = utf8(tr("Close without storing what you typed?"));
    alert.buttons = {{utf8(tr("Keep Editing")), {}, AlertKey::Escape}, {utf8(tr("Close")), {}, AlertKey::None}};
    AlertBox box(alert, this);
    box.exec();
    return box.returnCode() == alertSecondButtonReturn;
}

void SheetDialog::reject() {
    if (holdsTypedText() && !userGivesUpTypedText()) {
        return;
    }
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
