#pragma once

#include "controls/ChartView.h"

namespace kpx {

class BarChartView;

void bind(ChartView& control, BarChartView& widget);

}  // namespace kpx
