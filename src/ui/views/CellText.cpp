#include "ui/views/CellText.h"

#include "core/CellText.h"
#include "core/StoredWords.h"
#include "ui/Conversions.h"
#include "ui/Translations.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <string_view>

namespace kpx {

namespace {

constexpr std::array<std::string_view, 11> numberColumns = {
    "dayssupply", "refills", "remainingrefills", "cost",       "takenumber", "everinterval", "fills",
    "patients",   "drugs",   "pharmacies",       "prescribers"};
constexpr std::array<std::string_view, 6> dateColumns = {"dispensedate", "expiredate",       "lastdate",
                                                         "nextdate",     "expiredateTabTwo", "when"};
constexpr std::array<std::string_view, 5> longColumns = {"scriptnote", "Drugdesc", "patientaddress", "provnotes",
                                                         "difference"};
constexpr std::array<std::string_view, 3> shortColumns = {"patientcity", "patientstate", "patientpostal"};

template <std::size_t size>
bool contains(const std::array<std::string_view, size>& columns, const std::string& column) {
    return std::ranges::find(columns, column) != columns.end();
}

}  // namespace

QString cellText(const std::string& column, const Value& value, const Environment& environment) {
    if (const Text* text = value.as<Text>(); text && isStoredWord(column, text->view())) {
        return translated(text->view());
    }
    QString shown = qstring(shownText(column, value, environment, {}));
    if (contains(numberColumns, column) && QGuiApplication::isRightToLeft() && !shown.isEmpty() &&
        !shown.front().isDigit()) {
        // In a line read from the right ".80" would show as "80.".
        shown.prepend(QChar(0x200E));
    }
    return shown;
}

Qt::Alignment cellAlignment(const std::string& column) {
    return (contains(numberColumns, column) ? Qt::AlignRight | Qt::AlignAbsolute : Qt::AlignLeft) | Qt::AlignVCenter;
}

int usualCharacters(const std::string& column) {
    if (column == "when") {
        return 22;  // the time of day stands behind the date
    }
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
