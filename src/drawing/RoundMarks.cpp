#include "drawing/Chart.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kpx {

namespace {

constexpr double largestReasonable = 1e300;
constexpr double wantedSteps = 4;

double reasonable(double amount) {
    return std::isnan(amount) ? 0 : std::clamp(amount, -largestReasonable, largestReasonable);
}

/// The round number next above the span of one step.
double roundStep(double span) {
    const double power = std::pow(10.0, std::floor(std::log10(span)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (span <= factor * power * (1 + 1e-9)) {
            return factor * power;
        }
    }
    return 10 * power;
}

}  // namespace

std::vector<double> roundMarks(double lowest, double highest) {
    const double low = std::min(0.0, reasonable(lowest));
    const double high = std::max(0.0, reasonable(highest));
    if (low == high) {
        return {0, 1};
    }
    const double step = std::max(0.01, roundStep((high - low) / wantedSteps));
    const auto below = static_cast<int>(std::floor(low / step));
    const auto above = static_cast<int>(std::ceil(high / step));
    std::vector<double> marks;
    for (int count = below; count <= above; ++count) {
        marks.push_back(count * step);
    }
    return marks;
}

}  // namespace kpx
