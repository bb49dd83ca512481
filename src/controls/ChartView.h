#pragma once

#include "controls/Control.h"
#include "drawing/Chart.h"

#include <utility>

namespace kpx {

/// A picture of bars. Its user can only look at it.
class ChartView : public Control {
public:
    using Control::Control;

    /// Without bars before the first one is set.
    const Chart& chart() const { return m_chart; }
    void setChart(Chart chart) {
        m_chart = std::move(chart);
        notify();
    }

private:
    Chart m_chart;
};

}  // namespace kpx
