#include "reports/ReportLayout.h"

#include "core/DateUtilities.h"
#include "core/Keys.h"
#include "core/Numbers.h"
#include "core/Unicode.h"
#include "reports/ReportColumns.h"
#include "reports/ReportKind.h"

#include <span>
#include <utility>

namespace kpx {

namespace {

constexpr char headerFont[] = "LucidaGrande";
constexpr char headingFont[] = "LucidaGrande-Bold";
constexpr double headerFontSize = 10;
constexpr double headerLineY = 565;
constexpr double headingsY = 535;
constexpr double leftEdge = 20;
constexpr double ruleRightEdge = 725;
constexpr double pageNumberX = 690;
constexpr double closingBlockNeeds = 60;
constexpr std::size_t recordsPerPage = 45;

/// Half of what the title leaves free, by a rough width per character: deliberately not measured, so a
/// very long title begins off the page.
double titleX(const std::string& title) {
    const int roughWidth = static_cast<int>(3.0 * static_cast<double>(characterCount(title)));
    const int wholePoints = (static_cast<int>(pageNumberX) - roughWidth) / 2;
    return wholePoints;
}

class ReportPen {
public:
    ReportPen(int type, const Environment& environment, const LocalizedStrings& localized,
              const std::vector<std::string>& tableTitles)
        : m_type(type), m_environment(environment), m_localized(localized), m_tableTitles(tableTitles) {
        m_report.document.type = type;
        m_report.document.title = localized(reportTitle(type));
        m_report.document.pages.emplace_back();
    }

    void beginNextPage() { m_report.document.pages.emplace_back(); }

    void drawPageHeader(int pageNumber) {
        const std::string label = m_localized("Today's Date:");
        drawHeaderText(label, leftEdge);
        drawHeaderText(shortStyleFromDate(m_environment.now, m_environment),
                       leftEdge + 5.3 * static_cast<double>(characterCount(label)));
        drawHeaderText(m_report.document.title, titleX(m_report.document.title));
        drawHeaderText(m_localized("Page: ") + std::to_string(pageNumber), pageNumberX);
        draw(DrawLine{leftEdge, 557, ruleRightEdge, 557, 1.0});
        draw(DrawLine{leftEdge, 553, ruleRightEdge, 553, 1.8});
        drawHeadings();
    }

    void drawRecordRow(const Record& record, double y) {
        for (const ReportColumn& column : reportColumns(m_type)) {
            if (auto text = reportFieldText(column, record, m_environment)) {
                drawBodyText(std::move(*text), column.x, y);
            } else if (!column.optional) {
                ++m_report.missingFields;
            }
        }
    }

    void drawClosingBlock(double totalCost, double averageMonthlyCost, double y) {
        drawBodyText("======", 700, y - 15);
        drawBodyText(m_localized("Total Service Costs"), 560, y - 30);
        drawBodyText(formatCurrency(totalCost, m_environment), 700, y - 30);
        drawBodyText(m_localized("Average Monthly Cost"), 560, y - 45);
        drawBodyText(formatCurrency(averageMonthlyCost, m_environment), 700, y - 45);
    }

    LaidOutReport takeReport() { return std::move(m_report); }

private:
    void draw(auto operation) { m_report.document.pages.back().operations.emplace_back(std::move(operation)); }

    void drawHeaderText(std::string text, double x) {
        draw(DrawText{std::move(text), headerFont, headerFontSize, false, x, headerLineY});
    }

    void drawBodyText(std::string text, double x, double y) {
        draw(DrawText{std::move(text), reportBodyFont, reportBodyFontSize, false, x, y});
    }

    void drawHeadings() {
        const std::span<const ReportColumn> columns = reportColumns(m_type);
        for (std::size_t index = 0; index < columns.size(); ++index) {
            const ReportColumn& column = columns[index];
            std::string heading;
            if (column.heading) {
                heading = m_localized(column.heading);
            } else if (index < m_tableTitles.size()) {
                heading = m_tableTitles[index];
            }
            draw(DrawText{std::move(heading), headingFont, headerFontSize, true, column.x, headingsY});
        }
    }

    int m_type;
    const Environment& m_environment;
    const LocalizedStrings& m_localized;
    const std::vector<std::string>& m_tableTitles;
    LaidOutReport m_report;
};

/// Expired by the exact instant. A prescription without an expiration date never expires; one without a
/// number of refills has none.
bool isActive(const Record& record, const Environment& environment) {
    const auto expiration = reportDate(record, MHExpireDateKey, environment);
    return !(expiration && *expiration < environment.now) && record.integer(MHRefillsKey) >= 1;
}

}  // namespace

LaidOutReport printReport(int type, const Records& records, double totalCost, double averageMonthlyCost,
                          const Environment& environment, const LocalizedStrings& localized,
                          const FontMetrics& bodyMetrics, const std::vector<std::string>& tableTitles) {
    ReportPen pen(type, environment, localized, tableTitles);
    const double lineStep = bodyMetrics.ascent + bodyMetrics.descent + 2.0;
    int pageNumber = 0;
    double y = headingsY;
    for (std::size_t index = 0; index < records.size(); ++index) {
        if (index % recordsPerPage == 0) {
            if (index > 0) {
                pen.beginNextPage();
            }
            pen.drawPageHeader(++pageNumber);
            y = headingsY;
        }
        if (type == activePrescriptionsReport && !isActive(records[index], environment)) {
            continue;
        }
        y -= lineStep;
        pen.drawRecordRow(records[index], y);
    }
    if (type == allPrescriptionsReport && !records.empty()) {
        if (y < closingBlockNeeds) {
            pen.beginNextPage();
            pen.drawPageHeader(pageNumber);
            y = headingsY - lineStep;
        }
        pen.drawClosingBlock(totalCost, averageMonthlyCost, y);
    }
    return pen.takeReport();
}

}  // namespace kpx
