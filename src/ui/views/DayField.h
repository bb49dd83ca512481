#pragma once

#include <QDateTimeEdit>

namespace kpx {

/// A field for a day, typed or stepped by the arrow keys: Left and Right go through its parts. The mouse wheel scrolls
/// what lies below instead of changing a date behind the user's back. Needs a display format with the year in full.
///
/// Dates may be typed as they are read, with their separators. A year left at two digits is one of this
/// century: 25 is 2025. Digits of any script count as the Latin ones.
class DayField : public QDateTimeEdit {
    Q_OBJECT

public:
    explicit DayField(QWidget* parent = nullptr);

    /// Takes over what was typed so far, as leaving the field does. A text that is no date gives way to the
    /// date before.
    void readText();

protected:
    void keyPressEvent(QKeyEvent* typed) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    /// The whole date is one stop.
    bool focusNextPrevChild(bool next) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void typeKey(QKeyEvent* event);

    /// The last key completed a part of the date, and the cursor went on to the next one by itself.
    bool m_wentOn = false;
};

}  // namespace kpx
