#pragma once

#include "core/Sorting.h"

#include <array>
#include <string_view>

namespace kpx {

// Report types with a meaning of their own. Types and check box tags are the same numbers.
inline constexpr int activePrescriptionsReport = 1;  ///< leaves out what has expired or has no refills
inline constexpr int allPrescriptionsReport = 2;     ///< closes with the total and the monthly average
inline constexpr int firstReport = 1;
inline constexpr int lastReport = 7;
inline constexpr int allReportsTag = 10;  ///< the "all" check box; no report of its own
inline constexpr int tableContentsReport = 99;

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
