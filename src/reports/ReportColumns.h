#pragma once

#include "region/Environment.h"
#include "region/LocalizedStrings.h"
#include "values/Record.h"

#include <optional>
#include <span>
#include <string>

namespace kpx {

/// How a column's value becomes text.
enum class ReportField {
    PlainText,
    TwoDates,        ///< two dates, one tab between them
    Word,            ///< one that is stored in English and shown translated
    TypeAndRefills,  ///< such a word and a number, two tabs between them
    Currency,
    ShortDate,
    NarrowedInteger,  ///< in signed 16 bits, so that 70000 prints as 4464; see behaviours
};

struct ReportColumn {
    /// Points from the page's left edge, of heading and field alike.
    double x = 0;
    /// In English; null where the heading is the shown table's own.
    const char* heading = nullptr;
    ReportField field = ReportField::PlainText;
    const char* key = nullptr;
    const char* secondKey = nullptr;
    /// A value that may be missing without a word.
    bool optional = false;
};

/// The columns of a report type; none for an unknown one. Those of the table's contents stand in the
/// order of KPXAppDelegate::copyColumnTitlesOnTab1, whatever the arrangement on the screen.
std::span<const ReportColumn> reportColumns(int type);

/// What is drawn in the column for the record, in short date style and the locale's currency. Null when
/// a value is missing; of two values, when either is.
std::optional<std::string> reportFieldText(const ReportColumn& column, const Record& record,
                                           const Environment& environment, const LocalizedStrings& localized);

/// The date under the key, whether it is one already or a stored YYYYMMDD text.
std::optional<Date> reportDate(const Record& record, const char* key, const Environment& environment);

}  // namespace kpx
