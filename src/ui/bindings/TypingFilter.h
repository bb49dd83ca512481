#pragma once

#include "controls/TextField.h"

#include <QObject>

class QLineEdit;

namespace kpx {

/// Hands what is typed into a line, by key or by an input method, to its control first, which may make something
/// else of it. Pasted and dropped text passes it by.
class TypingFilter : public QObject {
    Q_OBJECT

public:
    /// Lives with the widget; the control outlives both.
    TypingFilter(const TextField& control, QLineEdit& widget);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// False when the text can go in as it was typed.
    bool typeAnother(const QString& typed);

    const TextField& m_control;
    QLineEdit& m_widget;
};

}  // namespace kpx
