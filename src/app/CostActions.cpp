#include "app/KPXAppDelegate.h"
#include "core/Numbers.h"
#include "costs/CostSummary.h"

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
        field.setText(copyFormatStringForTextField(static_cast<float>(amount), "###,###,###.00", here));
    };
    show(outlets.totalCostTab3, figures.total);
    show(outlets.avgMonthlyCostTab3, figures.average);
    outlets.howManyDBRecords.setText(costSummaryLine(records->size(), figures.range, here, m_strings));
}

}  // namespace kpx
