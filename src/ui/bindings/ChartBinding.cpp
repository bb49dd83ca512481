#include "ui/bindings/ChartBinding.h"

#include "ui/charts/BarChartView.h"

namespace kpx {

void bind(ChartView& control, BarChartView& widget) {
    control.changed = [&control, &widget] { widget.setChart(control.chart()); };
}

}  // namespace kpx
