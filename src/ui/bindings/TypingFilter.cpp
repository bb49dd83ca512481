#include "ui/bindings/TypingFilter.h"

#include "ui/Conversions.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace kpx {

TypingFilter::TypingFilter(const TextField& control, QLineEdit& widget)
    : QObject(&widget), m_control(control), m_widget(widget) {
    widget.installEventFilter(this);
}

bool TypingFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool isCommand = (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
        return !isCommand && typeAnother(key->text());
    }
    if (event->type() == QEvent::InputMethod) {
        const auto* composed = static_cast<QInputMethodEvent*>(event);
        if (composed->replacementLength() == 0 && typeAnother(composed->commitString())) {
            // What is still being composed stands where it stood.
            QInputMethodEvent rest(composed->preeditString(), composed->attributes());
            QCoreApplication::sendEvent(watched, &rest);
            return true;
        }
    }
    return false;
}

bool TypingFilter::typeAnother(const QString& typed) {
    // A digit of some scripts is two units long.
    const bool isText = !typed.isEmpty() && QChar::isPrint(typed.toUcs4().constFirst());
    if (!isText || m_widget.isReadOnly()) {
        return false;
    }
    const bool hasSelection = m_widget.hasSelectedText();
    const int begin = hasSelection ? m_widget.selectionStart() : m_widget.cursorPosition();
    const int end = hasSelection ? m_widget.selectionEnd() : begin;
    const QString before = m_widget.text().left(begin);
    const QString after = qstring(m_control.textAfterTyping(utf8(before), utf8(typed)));
    if (after == before + typed) {
        return false;
    }
    m_widget.setSelection(0, end);
    m_widget.insert(after);
    return true;
}

}  // namespace kpx
