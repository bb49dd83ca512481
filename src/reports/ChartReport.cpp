#include "reports/ChartReport.h"

#include "drawing/ChartLayout.h"
#include "reports/PageHeader.h"
#include "reports/ReportKind.h"

#include <iterator>

namespace kpx {

namespace {

/// Below the header and as wide as its rule, so no printer cuts the amounts at the right.
constexpr ChartFrame chartFrame{.box = {.left = 20, .bottom = 30, .width = 705, .height = 505}, .textSize = 9};

}  // namespace

Document chartReport(const Chart& chart, const Environment& environment, const LocalizedStrings& localized) {
    Page page;
    drawPageHeader(page, chart.title, 1, environment, localized);
    LaidOutChart picture = layOutChart(chart, chartFrame);
    page.operations.insert(page.operations.end(), std::make_move_iterator(picture.operations.begin()),
                           std::make_move_iterator(picture.operations.end()));
    return {chartReportType, chart.title, {std::move(page)}};
}

}  // namespace kpx
