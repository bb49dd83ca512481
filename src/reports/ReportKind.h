#pragma once

#include "core/Sorting.h"

#include <array>
#include <string_view>

namespace kpx {

// The report types, which are the tags of their check boxes too.
inline constexpr int activePrescriptionsReport = 1;  ///< leaves out what has expired or has no refills
inline constexpr int allPrescriptionsReport = 2;     ///< closes with the total and the monthly average
inline constexpr int prescriptionsByPrescriberReport = 3;
inline constexpr int patientListReport = 4;
inline constexpr int pharmacyListReport = 5;
inline constexpr int drugListReport = 6;
inline constexpr int prescriberListReport = 7;
inline constexpr int firstReport = activePrescriptionsReport;
inline constexpr int lastReport = prescriberListReport;
inline constexpr int allReportsTag = 10;        ///< the "all" check box; no report of its own
inline constexpr int tableContentsReport = 99;  ///< the table of tab 1 as it is shown; no check box
inline constexpr int chartReportType = 100;     ///< a chart of the costs tab; no check box

/// What a report prints and in which order.
struct ReportKind {
    int type = 0;
    /// In English, as it is looked up for printing.
    std::string_view title;
    /// The reference list that it prints whole; empty for the history as narrowed on the reports tab.
    std::string_view listFile;
    /// A level without a key takes no part.
    std::array<SortDescriptor, 3> order;
};

/// The report chosen by a check box. Null for any other type: the table's contents come as they are shown.
const ReportKind* reportKind(int type);

/// Of any type; one that is unknown has a title too.
std::string_view reportTitle(int type);

}  // namespace kpx
