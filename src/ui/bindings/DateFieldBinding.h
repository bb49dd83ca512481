#pragma once

#include "controls/DateField.h"
#include "region/Environment.h"

#include <functional>

class QCalendarWidget;
class QDateTimeEdit;

namespace kpx {

/// The widget shows the day that the table shows, in the region's zone and the Gregorian calendar; the time of day
/// stays what it was while the user changes the day. Every day that a file can hold with four digits of a year can be
/// set, from 1000-01-01 to 9999-12-31; a day beyond is shown as it is.
void bind(DateField& control, QDateTimeEdit& widget, std::function<Environment()> environment);
void bind(DateField& control, QCalendarWidget& widget, std::function<Environment()> environment);

}  // namespace kpx
