#pragma once

#include "core/Keys.h"
#include "region/Environment.h"
#include "reports/ReportLayout.h"
#include "values/Record.h"

#include <string>
#include <variant>
#include <vector>

namespace kpx {

/// Ascent and descent that make a line step of 11.
inline constexpr FontMetrics plainMetrics{7, 2};

/// 5 March 2024, 12:00 in universal time.
inline Environment reportEnvironment(const char* locale = "en_US") {
    return {Date::fromSecondsSince1970(1709640000), Region(locale, "UTC")};
}

inline Record prescription(const std::string& patient = "Ann", const std::string& rxNumber = "17") {
    return Record{{MHPatientKey, patient},
                  {MHPharmacyKey, "Corner"},
                  {MHDrugKey, "Aspirin"},
                  {MHPrescriberKey, "Dr. Grey"},
                  {MHRxNumberKey, rxNumber},
                  {MHTotalCostKey, "1234.50"},
                  {MHRefillsKey, 3},
                  {MHRefillsRemainKey, 2},
                  {MHDispenseDateKey, "20240105"},
                  {MHExpireDateKey, "20250320"},
                  {MHFillTypeKey, "Initial"}};
}

inline LaidOutReport laidOut(int type, const Records& records, const Environment& environment = reportEnvironment(),
                             const LocalizedStrings& localized = {}) {
    return printReport(type, records, 12, 2469, 1234.5, environment, localized, plainMetrics, {});
}

/// The texts of a page, or of those in the body font only.
inline std::vector<DrawText> textsOf(const Page& page, double size = 0) {
    std::vector<DrawText> texts;
    for (const DrawingOperation& operation : page.operations) {
        const auto* text = std::get_if<DrawText>(&operation);
        if (text && (size == 0 || text->size == size)) {
            texts.push_back(*text);
        }
    }
    return texts;
}

inline std::vector<DrawText> rowsOf(const Page& page) { return textsOf(page, reportBodyFontSize); }

}  // namespace kpx
