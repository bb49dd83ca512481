#pragma once

#include <QDateTimeEdit>

namespace kpx {

/// A field for a day, typed or stepped by the arrow keys. The mouse wheel scrolls what lies below instead of
/// changing a date behind the user's back. Needs a display format with the year in full.
///
/// Dates may be typed as they are read, with their separators. A year left at two digits is one of this
/// century: 25 is 2025.
class DayField : public QDateTimeEdit {
    Q_OBJECT

public:
    explicit DayField(QWidget* parent = nullptr);

    /// Takes over what was typed so far, as leaving the field does. A text that is no date gives way to the
    /// date before.
    void readText();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    /// The last key completed a part of the date, and the cursor went on to the next one by itself.
    bool m_wentOn = false;
};

}  // namespace kpx
