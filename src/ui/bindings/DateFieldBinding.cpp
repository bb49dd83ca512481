#include "ui/bindings/DateFieldBinding.h"

#include "region/DateUtilities.h"
#include "ui/Conversions.h"
#include "ui/bindings/UserAct.h"

#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QSignalBlocker>

namespace kpx {

namespace {

const QDate firstDay(1000, 1, 1);
const QDate lastDay(9999, 12, 31);

bool canBeSet(const QDate& day) { return day >= firstDay && day <= lastDay; }

QDate dayOf(const DateField& control, const Environment& environment) {
    const CalendarDay day = yearMonthDayFromDate(control.date(), environment);
    return QDate(day.year, day.month, day.day);
}

void userSetDay(DateField& control, const QDate& day, const Environment& environment) {
    if (canBeSet(day)) {
        control.userSetDate(dateOnDay({day.year(), day.month(), day.day()}, control.date(), environment));
    } else {
        control.changed();  // back to what it was
    }
}

/// A day that cannot be typed takes the place of the day before the first, as a text.
void showDay(const DateField& control, QDateTimeEdit& widget, const Environment& environment) {
    const std::string pattern = typedDayPattern(environment);
    if (widget.displayFormat() != qstring(pattern)) {
        widget.setDisplayFormat(qstring(pattern));
    }
    const QDate day = dayOf(control, environment);
    const bool asText = !canBeSet(day);
    widget.setSpecialValueText(asText ? qstring(componentOfDate(control.date(), pattern, environment)) : QString());
    const QDate shown = asText ? widget.minimumDate() : day;
    if (widget.date() != shown) {
        widget.setDate(shown);
    }
}

}  // namespace

void bind(DateField& control, QDateTimeEdit& widget, std::function<Environment()> environment) {
    // The widget holds a day and no instant: no clock changes in it, and no script's digits but the files'.
    widget.setTimeSpec(Qt::UTC);
    widget.setLocale(QLocale::c());
    widget.setDateRange(firstDay.addDays(-1), lastDay);
    widget.setButtonSymbols(QAbstractSpinBox::NoButtons);
    control.changed = [&control, &widget, environment] {
        const QSignalBlocker noUserAct(widget);
        showDay(control, widget, environment());
        widget.setEnabled(control.isEnabled());
    };
    QObject::connect(&widget, &QDateTimeEdit::dateChanged, &widget,
                     byUser(control, widget,
                            [&control, environment](const QDate& day) { userSetDay(control, day, environment()); }));
}

void bind(DateField& control, QCalendarWidget& widget, std::function<Environment()> environment) {
    widget.setMaximumDate(lastDay);
    control.changed = [&control, &widget, environment] {
        const QSignalBlocker noUserAct(widget);
        widget.setSelectedDate(dayOf(control, environment()));
        widget.setEnabled(control.isEnabled());
    };
    // Steps with the arrow keys count as picking: each shows at once in the field. A click on the day
    // already selected changes nothing, but is a pick all the same.
    QObject::connect(&widget, &QCalendarWidget::selectionChanged, &widget,
                     [&control, &widget, environment] { userSetDay(control, widget.selectedDate(), environment()); });
    QObject::connect(&widget, &QCalendarWidget::clicked, &widget, [&control, environment](const QDate& day) {
        const Environment here = environment();
        if (dayOf(control, here) == day) {
            userSetDay(control, day, here);
        }
    });
}

}  // namespace kpx
