#include "ui/bindings/TextFieldBinding.h"

#include "ui/Conversions.h"
#include "ui/bindings/TypingFilter.h"
#include "ui/bindings/UserAct.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include <limits>

namespace kpx {

namespace {

void showText(QLineEdit& widget, const QString& text) {
    if (widget.text() == text) {
        return;
    }
    // After a refused or shortened edit the cursor goes back by what was taken away.
    const auto position = static_cast<int>(widget.cursorPosition() + text.size() - widget.text().size());
    widget.setText(text);
    widget.setCursorPosition(widget.hasFocus() ? qBound(0, position, static_cast<int>(text.size())) : 0);
}

}  // namespace

void bind(TextField& control, QLineEdit& widget) {
    widget.setReadOnly(!control.isEditable());
    if (QGuiApplication::isRightToLeft()) {
        // Beside or below its label, which stands right; a number or a Latin name by itself would stand left, and a
        // text that is written from the right would be mirrored to the left.
        widget.setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    }
    control.changed = [&control, &widget] {
        const QSignalBlocker noKeystroke(widget);
        showText(widget, qstring(control.text()));
        widget.setEnabled(control.isEnabled());
    };
    widget.setMaxLength(std::numeric_limits<int>::max());
    if (control.isEditable()) {
        new TypingFilter(control, widget);
        QObject::connect(&widget, &QLineEdit::textEdited, &widget,
                         byUser(control, widget, [&control](const QString& text) { control.userEdit(utf8(text)); }));
        // Assistive technology sets the text without typing it, mostly from elsewhere.
        QObject::connect(&widget, &QLineEdit::textChanged, &widget, byUser(control, widget, [&control, &widget] {
            if (const std::string text = utf8(widget.text()); text != control.text()) {
                widget.setModified(true);
                control.userEdit(text);
                if (!widget.hasFocus()) {
                    control.userEndEditing();
                }
            }
        }));
        QObject::connect(&widget, &QLineEdit::editingFinished, &widget, [&control] { control.userEndEditing(); });
    }
}

void bind(Label& control, QLabel& widget) {
    widget.setTextFormat(Qt::PlainText);
    control.changed = [&control, &widget] { widget.setText(qstring(control.text())); };
}

}  // namespace kpx
