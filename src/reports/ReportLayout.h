#pragma once

#include "drawing/Document.h"
#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kpx {

/// The font of rows and closing block. Its metrics give the line step.
inline constexpr char reportBodyFont[] = "LucidaGrande";
inline constexpr double reportBodyFontSize = 8;

/// A report on its pages.
struct LaidOutReport {
    Document document;
    /// Fields that a record has no value for, each of which the user is told about. They stay blank.
    std::size_t missingFields = 0;
};

/// Lays the records out, in their order, on pages of 45.
///
/// Pages break by the record's index, and a report of active prescriptions skips records without giving
/// their places to later ones: its pages may hold fewer lines, or only the header. No records at all make
/// one blank page. Report 2 closes with the two figures; where they need another page, that one bears the
/// number of the page before it. `tableTitles` are the headings of the report on the shown table, in the
/// order of its columns; the other reports have headings of their own. The elapsed months come with the figures
/// they make up and are not printed.
LaidOutReport printReport(int type, const Records& records, double elapsedMonths, double totalCost,
                          double averageMonthlyCost, const Environment& environment, const LocalizedStrings& localized,
                          const FontMetrics& bodyMetrics, const std::vector<std::string>& tableTitles);

}  // namespace kpx
