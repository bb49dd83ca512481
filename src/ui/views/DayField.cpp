#include "ui/views/DayField.h"

#include "ui/Conversions.h"
#include "ui/views/ReturnKey.h"
#include "values/Unicode.h"

#include <QAccessibleWidget>

#include <QGuiApplication>
#include <QInputMethodEvent>
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

/// A text as its line of text is one, and a value in days: the toolkit's own steps lead nowhere.
class AccessibleDay : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleDay(DayField* field) : QAccessibleWidget(field, QAccessible::SpinBox) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) {
            return static_cast<QAccessibleValueInterface*>(this);
        }
        if (type == QAccessible::TextInterface || type == QAccessible::EditableTextInterface) {
            return line()->interface_cast(type);
        }
        return QAccessibleWidget::interface_cast(type);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.editable = true;
        return state;
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? field().text() : QAccessibleWidget::text(kind);
    }
    void setText(QAccessible::Text kind, const QString& text) override {
        if (kind == QAccessible::Value) {
            line()->setText(kind, text);
        } else {
            QAccessibleWidget::setText(kind, text);
        }
    }
    /// The line is a part of it and no control by itself.
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* focusChild() const override { return nullptr; }

    QVariant currentValue() const override { return static_cast<int>(field().date().toJulianDay()); }
    void setCurrentValue(const QVariant& value) override {
        if (field().isEnabled()) {
            field().setDate(QDate::fromJulianDay(value.toInt()));
        }
    }
    QVariant maximumValue() const override { return static_cast<int>(field().maximumDate().toJulianDay()); }
    QVariant minimumValue() const override { return static_cast<int>(field().minimumDate().toJulianDay()); }
    QVariant minimumStepSize() const override { return 1; }

private:
    DayField& field() const { return static_cast<DayField&>(*widget()); }
    QAccessibleInterface* line() const {
        return QAccessible::queryAccessibleInterface(widget()->findChild<QLineEdit*>());
    }
};

QAccessibleInterface* accessibleDay(const QString&, QObject* object) {
    auto* field = qobject_cast<DayField*>(object);
    return field ? new AccessibleDay(field) : nullptr;
}

bool isSeparator(const QString& typed) { return typed.size() == 1 && QStringLiteral("/.-").contains(typed); }

}  // namespace

DayField::DayField(QWidget* parent) : QDateTimeEdit(parent) {
    // A second time changes nothing.
    QAccessible::installFactory(accessibleDay);
    // Under the name that the toolkit gives it, it is hidden from assistive technology.
    lineEdit()->setObjectName(QStringLiteral("qt_day_line"));
    // By default the wheel would also take the focus.
    setFocusPolicy(Qt::StrongFocus);
    // A date is typed day by month by year in languages written from the right too, where the toolkit would turn its
    // parts around.
    setLayoutDirection(Qt::LeftToRight);
    setAlignment(QGuiApplication::isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
}

void DayField::readText() {
    const QDate day = dayWithShortYear(text(), displayFormat(), locale());
    if (day.isValid()) {
        setDate(day);
    } else {
        interpretText();
    }
}

void DayField::keyPressEvent(QKeyEvent* typed) {
    // A digit of any script is the Latin one it stands for.
    const QString text = qstring(withLatinDigits(utf8(typed->text())));
    QKeyEvent latin(typed->type(), text == typed->text() ? typed->key() : text.at(0).unicode(), typed->modifiers(),
                    text, typed->isAutoRepeat());
    typeKey(&latin);
    typed->setAccepted(latin.isAccepted());
}

void DayField::inputMethodEvent(QInputMethodEvent* event) {
    const QString text = qstring(withLatinDigits(utf8(event->commitString())));
    if (text == event->commitString()) {
        QDateTimeEdit::inputMethodEvent(event);
        return;
    }
    for (const QChar digit : text) {
        QKeyEvent key(QEvent::KeyPress, digit.unicode(), Qt::NoModifier, digit);
        typeKey(&key);
    }
}

void DayField::typeKey(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) && event->modifiers() == Qt::NoModifier) {
        const int part = currentSectionIndex() + (event->key() == Qt::Key_Left ? -1 : 1);
        setSelectedSection(sectionAt(qBound(0, part, sectionCount() - 1)));
        return;
    }
    const bool isDigit = event->text().size() == 1 && event->text().at(0).isDigit();
    if (isDigit && lineEdit()->selectedText() == text()) {
        // In place of all of it a digit would be no date, and be refused: the date starts anew at its first part.
        setSelectedSection(sectionAt(0));
    }
    if (isSeparator(event->text())) {
        // By itself it would leave the field, as Tab does. Where the part before it was full, the cursor is there
        // already.
        if (!m_wentOn) {
            setSelectedSection(sectionAt(qMin(currentSectionIndex() + 1, sectionCount() - 1)));
        }
        m_wentOn = false;
        return;
    }
    if (isReturnKey(*event)) {
        readText();
    }
    const int section = currentSectionIndex();
    QDateTimeEdit::keyPressEvent(event);
    m_wentOn = isDigit && currentSectionIndex() != section;
}

bool DayField::focusNextPrevChild(bool next) { return QWidget::focusNextPrevChild(next); }

void DayField::focusOutEvent(QFocusEvent* event) {
    m_wentOn = false;
    readText();
    QDateTimeEdit::focusOutEvent(event);
}

void DayField::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace kpx
