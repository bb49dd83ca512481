#include "app/KPXAppDelegate.h"
#include "costs/CostSummary.h"
#include "reports/ReportKind.h"
#include "reports/ReportLayout.h"

#include <utility>

namespace kpx {

namespace {

void reportNotFoundErrorMsg(KPXAppDelegate& application) {
    application.doSheetAlert(mainWindow, application.localized("whichReport not found"),
                             application.localized("respondToPrintBtnPane4 error"));
}

/// Whole list files for the reference lists, the narrowed history for every other report.
std::optional<Records> recordsToReport(KPXAppDelegate& application, const ReportKind* kind) {
    if (kind && !kind->listFile.empty()) {
        return application.copyArrayFromDataFile(kind->listFile);
    }
    const Outlets& outlets = application.outlets;
    return application.copyArrayAndCheckDates(outlets.beginDateTab4, outlets.endDateTab4, outlets.patientPopTab4,
                                              outlets.drugNamePopTab4, nullptr);
}

/// Sorts the records. The figures are those of the report that closes with them; finding them leaves its
/// records by date, which is then the order of those that the sort finds equal.
CostFigures orderForReport(const ReportKind& kind, Records& records, const Environment& environment) {
    const CostFigures figures = kind.type == allPrescriptionsReport ? costFigures(records, environment) : CostFigures();
    doSortWithArray(records, kind.order[0], kind.order[1], kind.order[2], environment);
    return figures;
}

void submit(KPXAppDelegate& application, PrintPreview& preview, const LocalizedStrings& localized, int reportType,
            const Records& records, const CostFigures& figures) {
    LaidOutReport report = printReport(
        reportType, records, figures.elapsedMonths, figures.total, figures.average, application.environment(),
        localized, preview.metrics(reportBodyFont, reportBodyFontSize), application.copyColumnTitlesOnTab1());
    // A missing value is told with the words for an unknown report, once each.
    for (; report.missingFields > 0; --report.missingFields) {
        reportNotFoundErrorMsg(application);
    }
    preview.open(std::move(report.document));
}

}  // namespace

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
    if (reportType == tableContentsReport) {
        // Printed before anything is checked: an empty table gives a blank page and the alert.
        submit(*this, m_ports.preview, m_strings, reportType, maintArrayForTVTab1, {});
        if (maintArrayForTVTab1.empty()) {
            noDataFoundErrorMsg();
        }
        return;
    }
    const ReportKind* kind = reportKind(reportType);
    auto records = recordsToReport(*this, kind);
    if (!records || records->empty()) {
        noDataFoundErrorMsg();
    } else if (!kind) {
        reportNotFoundErrorMsg(*this);
    } else {
        const CostFigures figures = orderForReport(*kind, *records, environment());
        submit(*this, m_ports.preview, m_strings, reportType, *records, figures);
    }
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
    // The seventh box is not looked at: with the first six it is turned on too; see behaviours.
    for (int type = firstReport; type < lastReport; ++type) {
        if (!outlets.reportsTab4.isOn(type)) {
            return false;
        }
    }
    return true;
}

}  // namespace kpx
