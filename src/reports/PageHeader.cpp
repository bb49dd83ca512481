#include "reports/PageHeader.h"

#include "region/DateUtilities.h"
#include "values/Unicode.h"

#include <utility>

namespace kpx {

namespace {

constexpr char headerFont[] = "LucidaGrande";
constexpr double headerFontSize = 10;
constexpr double headerLineY = 565;
constexpr double leftEdge = 20;
constexpr double ruleRightEdge = 725;
constexpr double pageNumberX = 690;

/// Half of what the title leaves free, by a rough width per character, not measured (see behaviours): a
/// very long title begins off the page.
double titleX(const std::string& title) {
    const int roughWidth = static_cast<int>(3.0 * static_cast<double>(characterCount(title)));
    const int wholePoints = (static_cast<int>(pageNumberX) - roughWidth) / 2;
    return wholePoints;
}

}  // namespace

void drawPageHeader(Page& page, const std::string& title, int pageNumber, const Environment& environment,
                    const LocalizedStrings& localized) {
    const auto draw = [&](std::string text, double x) {
        page.operations.emplace_back(DrawText{std::move(text), headerFont, headerFontSize, false, x, headerLineY});
    };
    const std::string today = shortStyleFromDate(environment.now, environment);
    if (const auto whole = localized.translation(localizable("Today's Date: %@"))) {
        draw(formatted(*whole, {today}), leftEdge);
    } else {
        const std::string label = localized("Today's Date:");
        draw(label, leftEdge);
        draw(today, leftEdge + 5.3 * static_cast<double>(characterCount(label)));
    }
    draw(title, titleX(title));
    const std::string number = std::to_string(pageNumber);
    draw(localized.sentence("Page: %d", {number}, localized("Page: ") + number), pageNumberX);
    page.operations.emplace_back(DrawLine{leftEdge, 557, ruleRightEdge, 557, 1.0});
    page.operations.emplace_back(DrawLine{leftEdge, 553, ruleRightEdge, 553, 1.8});
}

}  // namespace kpx
