#include "ui/views/DayField.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QWheelEvent>

namespace kpx {

namespace {

/// The day that a text with a year of two digits means; invalid for any other text.
QDate dayWithShortYear(const QString& text, QString format, const QLocale& locale) {
    constexpr int century = 2000;
    const QDate day = locale.toDate(text, format.replace(QStringLiteral("yyyy"), QStringLiteral("yy")));
    return day.isValid() ? QDate(century + day.year() % 100, day.month(), day.day()) : QDate();
}

bool isSeparator(const QString& typed) { return typed.size() == 1 && QStringLiteral("/.-").contains(typed); }

}  // namespace

DayField::DayField(QWidget* parent) : QDateTimeEdit(parent) {
    // By default the wheel would also take the focus.
    setFocusPolicy(Qt::StrongFocus);
}

void DayField::readText() {
    const QDate day = dayWithShortYear(text(), displayFormat(), locale());
    if (day.isValid()) {
        setDate(day);
    } else {
        interpretText();
    }
}

void DayField::keyPressEvent(QKeyEvent* event) {
    const bool isDigit = event->text().size() == 1 && event->text().at(0).isDigit();
    if (isDigit && lineEdit()->selectedText() == text()) {
        // In place of all of it a digit would be no date, and be refused: the date starts anew at its first part.
        setSelectedSection(sectionAt(0));
    }
    if (m_wentOn && isSeparator(event->text())) {
        // It would skip the part that the cursor has just reached.
        m_wentOn = false;
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        readText();
    }
    const int section = currentSectionIndex();
    QDateTimeEdit::keyPressEvent(event);
    m_wentOn = isDigit && currentSectionIndex() != section;
}

void DayField::focusOutEvent(QFocusEvent* event) {
    m_wentOn = false;
    readText();
    QDateTimeEdit::focusOutEvent(event);
}

void DayField::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace kpx
