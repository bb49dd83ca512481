#include "app/KPXAppDelegate.h"
#include "costs/CostSummary.h"
#include "region/Numbers.h"
#include "reports/ChartReport.h"

namespace kpx {

void KPXAppDelegate::respondToShowBtnPane3() {
    auto records = copyArrayAndCheckDates(outlets.beginDateTab3, outlets.endDateTab3, outlets.patientPopTab3,
                                          outlets.drugNamePopTab3, nullptr);
    if (!records || records->empty()) {
        noDataFoundErrorMsg();
        return;
    }
    const Environment here = environment();
    const CostFigures figures = costFigures(*records, here);
    // The fields hold single precision.
    const auto show = [&](TextField& field, double amount) {
        field.setText(formatShownCost(static_cast<float>(amount), here));
    };
    show(outlets.totalCostTab3, figures.total);
    show(outlets.avgMonthlyCostTab3, figures.average);
    outlets.howManyDBRecords.setText(costSummaryLine(records->size(), figures.range, here, m_strings));
    m_costCharts = costCharts(*records, figures, here, m_strings);
    outlets.printCostChartBtn.setEnabled(true);
    showCostChart();
}

void KPXAppDelegate::clearCosts() {
    for (TextField* field : {&outlets.totalCostTab3, &outlets.avgMonthlyCostTab3, &outlets.howManyDBRecords}) {
        field->setText({});
    }
    m_costCharts = {};
    fillCostChartSwitch();
    showCostChart();
}

void KPXAppDelegate::showCostChart() {
    outlets.costChart.setChart(m_costCharts.at(static_cast<std::size_t>(outlets.costChartKind.indexOfSelectedItem())));
}

void KPXAppDelegate::printCostChart() {
    m_ports.preview.open(chartReport(outlets.costChart.chart(), environment(), m_strings));
}

}  // namespace kpx
