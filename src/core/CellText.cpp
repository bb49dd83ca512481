#include "core/CellText.h"

#include "core/StoredWords.h"
#include "region/DateUtilities.h"
#include "region/Numbers.h"

#include <algorithm>

namespace kpx {

namespace {

std::string cell(const Record& row, const std::string& column, const Environment& environment,
                 const LocalizedStrings& localized) {
    const Value* value = row.find(column);
    return value ? shownText(column, *value, environment, localized) : std::string();
}

std::string escaped(const std::string& text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            default:
                result += character;
        }
    }
    return result;
}

}  // namespace

std::string shownText(std::string_view column, const Value& value, const Environment& environment,
                      const LocalizedStrings& localized) {
    if (const Date* date = value.as<Date>()) {
        const std::string day = shortStyleFromDate(*date, environment);
        return column == "when" ? day + "  " + timeOfDayFromDate(*date, environment) : day;
    }
    return column == "cost" ? formatShownCost(value, environment)
                            : shownWord(column, textOfValue(&value).value_or("").string(), localized);
}

std::string rowAsText(const Record& row, const std::vector<std::string>& columns, const Environment& environment,
                      const LocalizedStrings& localized) {
    std::string text;
    for (const std::string& column : columns) {
        std::string shown = cell(row, column, environment, localized);
        std::ranges::replace_if(
            shown, [](char character) { return character == '\t' || character == '\n' || character == '\r'; }, ' ');
        text += (&column == &columns.front() ? "" : "\t") + shown;
    }
    return text;
}

std::string rowAsTable(const Record& row, const std::vector<std::string>& columns,
                       const std::vector<std::string>& titles, const Environment& environment,
                       const LocalizedStrings& localized) {
    std::string head;
    std::string body;
    for (std::size_t index = 0; index < columns.size(); ++index) {
        head += "<th>" + escaped(titles[index]) + "</th>";
        body += "<td>" + escaped(cell(row, columns[index], environment, localized)) + "</td>";
    }
    return "<table><tr>" + head + "</tr><tr>" + body + "</tr></table>";
}

}  // namespace kpx
