#pragma once

#include "controls/DateField.h"

class QCalendarWidget;
class QDateTimeEdit;

namespace kpx {

/// The field shows the day; the time of day stays what it was while the user changes the day.
void bind(DateField& control, QDateTimeEdit& widget);
void bind(DateField& control, QCalendarWidget& widget);

}  // namespace kpx
