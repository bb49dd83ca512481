#include "ui/bindings/DateFieldBinding.h"

#include "ui/Conversions.h"

#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QSignalBlocker>

namespace kpx {

namespace {

/// The day, at the time of day that the control's date has.
Date onDay(const QDate& day, const DateField& control) {
    return dateFromQDateTime(QDateTime(day, qdateTime(control.date()).time()));
}

/// The locale's short form, the year always in full.
QString displayFormat(const QLocale& locale) {
    QString format = locale.dateFormat(QLocale::ShortFormat);
    if (!format.contains(QStringLiteral("yyyy"))) {
        format.replace(QStringLiteral("yy"), QStringLiteral("yyyy"));
    }
    return format;
}

}  // namespace

void bind(DateField& control, QDateTimeEdit& widget) {
    widget.setDisplayFormat(displayFormat(widget.locale()));
    widget.setButtonSymbols(QAbstractSpinBox::NoButtons);
    control.changed = [&control, &widget] {
        const QSignalBlocker noUserAct(widget);
        const QDate day = qdateTime(control.date()).date();
        if (widget.date() != day) {
            widget.setDate(day);
        }
        widget.setEnabled(control.isEnabled());
    };
    QObject::connect(&widget, &QDateTimeEdit::dateChanged, &widget,
                     [&control](const QDate& day) { control.userSetDate(onDay(day, control)); });
}

void bind(DateField& control, QCalendarWidget& widget) {
    control.changed = [&control, &widget] {
        const QSignalBlocker noUserAct(widget);
        widget.setSelectedDate(qdateTime(control.date()).date());
        widget.setEnabled(control.isEnabled());
    };
    // Steps with the arrow keys count as picking: each shows at once in the field. A click on the day
    // already selected changes nothing, but is a pick all the same.
    QObject::connect(&widget, &QCalendarWidget::selectionChanged, &widget,
                     [&control, &widget] { control.userSetDate(onDay(widget.selectedDate(), control)); });
    QObject::connect(&widget, &QCalendarWidget::clicked, &widget, [&control](const QDate& day) {
        if (qdateTime(control.date()).date() == day) {
            control.userSetDate(onDay(day, control));
        }
    });
}

}  // namespace kpx
