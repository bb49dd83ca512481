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
constexpr double gap = 2;
/// By how much the letters of the English label, before they are drawn closer in pairs, exceed their place.
constexpr double pairing = 0.2;

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
    // Places follow from counts of characters: a text of wide ones is set narrower rather than over its neighbour.
    const auto draw = [&](std::string text, double x, double room) {
        page.operations.emplace_back(
            DrawText{std::move(text), headerFont, headerFontSize, false, x, headerLineY, room});
    };
    const std::string today = shortStyleFromDate(environment.now, environment);
    if (const auto whole = localized.translation(localizable("Today's Date: %@"))) {
        draw(formatted(*whole, {today}), leftEdge, 0);
    } else {
        const std::string label = localized("Today's Date:");
        const double dateX = leftEdge + 5.3 * static_cast<double>(characterCount(label));
        draw(label, leftEdge, dateX - leftEdge + pairing);
        draw(today, dateX, 0);
    }
    draw(title, titleX(title), pageNumberX - titleX(title) - gap);
    const std::string number = std::to_string(pageNumber);
    draw(localized.sentence("Page: %d", {number}, localized("Page: ") + number), pageNumberX,
         pageRightEdge - pageNumberX);
    page.operations.emplace_back(DrawLine{leftEdge, 557, ruleRightEdge, 557, 1.0});
    page.operations.emplace_back(DrawLine{leftEdge, 553, ruleRightEdge, 553, 1.8});
}

}  // namespace kpx
