#pragma once

#include "costs/CostSummary.h"
#include "drawing/Chart.h"

#include <array>

namespace kpx {

/// By what the costs of a period are told apart, in the order of the switch that chooses one.
enum class CostBreakdown { ByMonth, ByDrug, ByPatient, ByPharmacy };
inline constexpr std::array costBreakdowns{CostBreakdown::ByMonth, CostBreakdown::ByDrug, CostBreakdown::ByPatient,
                                           CostBreakdown::ByPharmacy};

/// "By Month" and its like, in English.
const char* costBreakdownTitle(CostBreakdown breakdown);

/// One chart for each breakdown, in their order.
using CostCharts = std::array<Chart, costBreakdowns.size()>;

/// The costs of the records that the figures are of, as bars. Each bar is a sum by the total's own reading
/// of costs, so all bars of a chart add up to the total, to the cent.
///
/// By month: a column for every calendar month of the region from the earliest to the latest dispense date,
/// empty ones included, and the average; beyond 36 months only years stand at the axis. Else rows, the largest
/// first, of equal ones in the order of names: where there are more than eight, the seven largest and one for
/// all others, last. Names that differ at all are different; fills without a name share a row without one.
CostCharts costCharts(const Records& records, const CostFigures& figures, const Environment& environment,
                      const LocalizedStrings& localized);

}  // namespace kpx
