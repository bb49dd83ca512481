#include "reports/ReportLayout.h"

#include "core/Keys.h"
#include "region/Numbers.h"
#include "reports/PageHeader.h"
#include "reports/ReportColumns.h"
#include "reports/ReportKind.h"

#include <span>
#include <utility>

namespace kpx {

namespace {

constexpr char headingFont[] = "LucidaGrande-Bold";
constexpr double headingFontSize = 10;
constexpr double headingsY = 535;
constexpr double closingBlockNeeds = 60;
constexpr double columnGap = 4;
constexpr std::size_t recordsPerPage = 45;

/// What a column may take: up to a gap before the next one, the last one to the end of the page.
double roomOfColumn(std::span<const ReportColumn> columns, std::size_t index) {
    const double x = columns[index].x;
    return index + 1 < columns.size() ? columns[index + 1].x - columnGap - x : pageRightEdge - x;
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

    void drawPageHead(int pageNumber) {
        drawPageHeader(m_report.document.pages.back(), m_report.document.title, pageNumber, m_environment, m_localized);
        drawHeadings();
    }

    void drawRecordRow(const Record& record, double y) {
        const std::span<const ReportColumn> columns = reportColumns(m_type);
        for (std::size_t index = 0; index < columns.size(); ++index) {
            const ReportColumn& column = columns[index];
            if (auto text = reportFieldText(column, record, m_environment, m_localized)) {
                drawBodyText(std::move(*text), column.x, y, roomOfColumn(columns, index), lastPartOf(column));
            } else if (!column.optional) {
                ++m_report.missingFields;
            }
        }
    }

    void drawClosingBlock(double totalCost, double averageMonthlyCost, double y) {
        constexpr double labelX = 560;
        constexpr double amountX = 700;
        const auto drawLabel = [&](const char* label, double baseline) {
            drawBodyText(m_localized(label), labelX, baseline, amountX - columnGap - labelX);
        };
        const auto drawAmount = [&](std::string amount, double baseline) {
            drawBodyText(std::move(amount), amountX, baseline, pageRightEdge - amountX);
        };
        drawAmount("======", y - 15);
        drawLabel(localizable("Total Service Costs"), y - 30);
        drawAmount(formatCurrency(totalCost, m_environment), y - 30);
        drawLabel(localizable("Average Monthly Cost"), y - 45);
        drawAmount(formatCurrency(averageMonthlyCost, m_environment), y - 45);
    }

    LaidOutReport takeReport() { return std::move(m_report); }

private:
    void draw(auto operation) { m_report.document.pages.back().operations.emplace_back(std::move(operation)); }

    void drawBodyText(std::string text, double x, double y, double room, double lastPart = 0) {
        draw(DrawText{std::move(text), reportBodyFont, reportBodyFontSize, false, x, y, room, {}, {}, lastPart});
    }

    /// Both fill types end before the same tab stop in English, in most other languages they do not.
    double lastPartOf(const ReportColumn& column) const {
        constexpr double thirdTabStop = 84;
        return column.field == ReportField::TypeAndRefills && !m_localized.isEmpty() ? thirdTabStop : 0;
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
            draw(DrawText{std::move(heading), headingFont, headingFontSize, true, column.x, headingsY,
                          roomOfColumn(columns, index)});
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

LaidOutReport printReport(int type, const Records& records, [[maybe_unused]] double elapsedMonths, double totalCost,
                          double averageMonthlyCost, const Environment& environment, const LocalizedStrings& localized,
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
            pen.drawPageHead(++pageNumber);
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
            pen.drawPageHead(pageNumber);
            y = headingsY - lineStep;
        }
        pen.drawClosingBlock(totalCost, averageMonthlyCost, y);
    }
    return pen.takeReport();
}

}  // namespace kpx
