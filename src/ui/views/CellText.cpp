#include "ui/views/CellText.h"

#include "core/DateUtilities.h"
#include "core/Numbers.h"
#include "ui/Conversions.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <string_view>

namespace kpx {

namespace {

constexpr std::array<std::string_view, 6> numberColumns = {"dayssupply", "refills",    "remainingrefills",
                                                           "cost",       "takenumber", "everinterval"};
constexpr std::array<std::string_view, 5> dateColumns = {"dispensedate", "expiredate", "lastdate", "nextdate",
                                                         "expiredateTabTwo"};
constexpr std::array<std::string_view, 4> longColumns = {"scriptnote", "Drugdesc", "patientaddress", "provnotes"};
constexpr std::array<std::string_view, 3> shortColumns = {"patientcity", "patientstate", "patientpostal"};

template <std::size_t size>
bool contains(const std::array<std::string_view, size>& columns, const std::string& column) {
    return std::ranges::find(columns, column) != columns.end();
}

}  // namespace

QString cellText(const std::string& column, const Value& value, const Environment& environment) {
    if (const Text* text = value.as<Text>()) {
        return qstring(text->view());
    }
    if (const Date* date = value.as<Date>()) {
        return qstring(shortStyleFromDate(*date, environment));
    }
    if (const double* number = value.as<double>()) {
        return column == "cost" ? qstring(copyFormatStringForTextField(*number, "###,###,###.00", environment))
                                : QString::number(*number);
    }
    if (const std::int64_t* number = value.as<std::int64_t>()) {
        return column == "cost"
                   ? qstring(copyFormatStringForTextField(static_cast<double>(*number), "###,###,###.00", environment))
                   : QString::number(*number);
    }
    if (const std::uint64_t* number = value.as<std::uint64_t>()) {
        return QString::number(*number);
    }
    return {};
}

Qt::Alignment cellAlignment(const std::string& column) {
    return (contains(numberColumns, column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

int usualCharacters(const std::string& column) {
    if (contains(dateColumns, column)) {
        return 12;
    }
    if (contains(numberColumns, column)) {
        return column == "cost" ? 10 : 6;
    }
    if (contains(longColumns, column)) {
        return 30;
    }
    if (contains(shortColumns, column)) {
        return 14;
    }
    return column == "filltype" ? 8 : column == "scriptnum" || column == "rxnumTabTwo" ? 13 : 20;
}

bool isTextColumn(const std::string& column) {
    return !contains(dateColumns, column) && !contains(numberColumns, column) && column != "filltype";
}

QString redCellMeaning(const std::string& column) {
    return column == "nextdate" ? QCoreApplication::translate("Table", "Due")
                                : QCoreApplication::translate("Table", "Expired");
}

}  // namespace kpx
