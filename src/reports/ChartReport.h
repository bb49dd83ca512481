#pragma once

#include "drawing/Chart.h"
#include "drawing/Document.h"
#include "region/Environment.h"
#include "region/LocalizedStrings.h"

namespace kpx {

/// The chart as a document of one page, under the same header as the reports.
Document chartReport(const Chart& chart, const Environment& environment, const LocalizedStrings& localized);

}  // namespace kpx
