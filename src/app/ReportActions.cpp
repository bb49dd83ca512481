#include "app/KPXAppDelegate.h"
#include "costs/CostSummary.h"
#include "reports/ReportKind.h"
#include "reports/ReportLayout.h"

#include <utility>

namespace kpx {

void KPXAppDelegate::respondToPrintBtnPane4(const Button& sender) {
    if (&sender == &outlets.showPrintTableListBtn) {
        processReportPane4(tableContentsReport);
        return;
    }
    const bool all = outlets.reportsTab4.isOn(allReportsTag);
    bool any = false;
    for (int type = firstReport; type <= lastReport; ++type) {
        if (all || outlets.reportsTab4.isOn(type)) {
            processReportPane4(type);
            any = true;
        }
    }
    if (!any) {
        noReportsSelectedErrorMsg();
    }
}

void KPXAppDelegate::processReportPane4(int reportType) {
    const Environment here = environment();
    const auto unknown = [this] {
        doSheetAlert(mainWindow, localized("whichReport not found"), localized("respondToPrintBtnPane4 error"));
    };
    const auto print = [&](const Records& records, const CostFigures& figures) {
        LaidOutReport report =
            printReport(reportType, records, figures.total, figures.average, here, m_strings,
                        m_ports.preview.metrics(reportBodyFont, reportBodyFontSize), copyColumnTitlesOnTab1());
        // A missing value is told with the words for an unknown report, once each.
        for (; report.missingFields > 0; --report.missingFields) {
            unknown();
        }
        m_ports.preview.open(std::move(report.document));
    };

    if (reportType == tableContentsReport) {
        print(maintArrayForTVTab1, {});
        if (maintArrayForTVTab1.empty()) {
            noDataFoundErrorMsg();
        }
        return;
    }
    const ReportKind* kind = reportKind(reportType);
    auto records = kind && !kind->listFile.empty()
                       ? copyArrayFromDataFile(kind->listFile)
                       : copyArrayAndCheckDates(outlets.beginDateTab4, outlets.endDateTab4, outlets.patientPopTab4,
                                                outlets.drugNamePopTab4, nullptr);
    if (!records || records->empty()) {
        noDataFoundErrorMsg();
        return;
    }
    if (!kind) {
        unknown();
        return;
    }
    // The search for the earliest and latest date leaves the records in the order of their dates, and
    // that is the order of those that the sort finds equal.
    const CostFigures figures = reportType == allPrescriptionsReport ? costFigures(*records, here) : CostFigures();
    doSortWithArray(*records, kind->order[0], kind->order[1], kind->order[2], here);
    print(*records, figures);
}

void KPXAppDelegate::reportChkBoxClicked() {
    Matrix& boxes = outlets.reportsTab4;
    const int clicked = boxes.selectedTag().value_or(0);
    const bool on = boxes.isOn(clicked);
    if (clicked == allReportsTag) {
        boxes.setAll(on);
    } else if (clicked >= firstReport && clicked <= lastReport) {
        if (!on) {
            boxes.setOn(allReportsTag, false);
        } else if (areAllCheckBoxesON()) {
            boxes.setAll(true);
        }
    }
}

bool KPXAppDelegate::areAllCheckBoxesON() const {
    // The seventh box is deliberately not looked at: with the first six it is turned on too.
    for (int type = firstReport; type < lastReport; ++type) {
        if (!outlets.reportsTab4.isOn(type)) {
            return false;
        }
    }
    return true;
}

}  // namespace kpx
