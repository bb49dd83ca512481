#include "region/DateUtilities.h"
#include "tests/runner/Calls.h"

#include <algorithm>
#include <array>

namespace kpx::runner {

namespace {

Json dateToJson(Date date, const Arguments& arguments) { return Json{{"date", arguments.localTime().format(date)}}; }

/// An operation that makes a text of a date.
template <std::string (*function)(Date, const Environment&)>
Json textOfDate(Arguments& arguments, const Environment& environment) {
    return function(arguments.date(0), environment);
}

template <int (*function)(Date, const Environment&)>
Json numberOfDate(Arguments& arguments, const Environment& environment) {
    return function(arguments.date(0), environment);
}

template <std::string (*function)(const Environment&)>
Json textOfNow(Arguments&, const Environment& environment) {
    return function(environment);
}

template <std::int64_t (*function)(std::string_view, const Environment&)>
Json numberOfName(Arguments& arguments, const Environment& environment) {
    return function(arguments.text(0), environment);
}

Json callDiffDate(Arguments& arguments, const Environment& environment) {
    constexpr std::array<std::pair<const char*, CalendarUnit>, 8> names{{{"era", CalendarUnit::Era},
                                                                         {"year", CalendarUnit::Year},
                                                                         {"month", CalendarUnit::Month},
                                                                         {"week", CalendarUnit::Week},
                                                                         {"day", CalendarUnit::Day},
                                                                         {"hour", CalendarUnit::Hour},
                                                                         {"minute", CalendarUnit::Minute},
                                                                         {"second", CalendarUnit::Second}}};
    std::vector<CalendarUnit> units;
    for (std::size_t index = 2; index < arguments.count(); ++index) {
        const auto unit = std::ranges::find(names, arguments.text(index), [](const auto& name) { return name.first; });
        if (unit == names.end()) {
            arguments.fail("no calendar unit is called " + arguments.text(index));
            return nullptr;
        }
        units.push_back(unit->second);
    }
    const std::vector<std::int64_t> differences = diffDate(arguments.date(0), arguments.date(1), units, environment);
    Json value = Json::object();
    for (std::size_t index = 0; index < units.size(); ++index) {
        value[arguments.text(index + 2)] = differences.at(index);
    }
    return value;
}

Json callYear(Arguments& arguments, const Environment& environment) {
    const CalendarDay day = yearMonthDayFromDate(arguments.date(0), environment);
    return Json::array({day.year, day.month, day.day});
}

Json callDateByAddingDays(Arguments& arguments, const Environment& environment) {
    return dateToJson(dateByAddingDays(arguments.date(0), arguments.integer(1), arguments.integer(2),
                                       arguments.integer(3), environment),
                      arguments);
}

Json callDateFromYear(Arguments& arguments, const Environment& environment) {
    return dateToJson(dateFromYear(arguments.integer(0), arguments.integer(1), arguments.integer(2), environment),
                      arguments);
}

Json callDateFromYYMMDDStr(Arguments& arguments, const Environment& environment) {
    return dateToJson(dateFromYYMMDDStr(arguments.text(0), environment), arguments);
}

Json callJanFirstThisYear(Arguments& arguments, const Environment& environment) {
    return dateToJson(janFirstThisYear(environment), arguments);
}

Json callCleanseDate(Arguments& arguments, const Environment& environment) {
    return dateToJson(cleanseDate(arguments.date(0), environment), arguments);
}

Json callDaysBetweenDate(Arguments& arguments, const Environment& environment) {
    return daysBetweenDate(arguments.date(0), arguments.date(1), environment);
}

Json callComponentOfDate(Arguments& arguments, const Environment& environment) {
    return componentOfDate(arguments.date(0), arguments.text(1), environment);
}

Json callMonthNameFromNumber(Arguments& arguments, const Environment& environment) {
    const std::optional<std::string> name = monthNameFromNumber(arguments.integer(0), environment);
    return name ? Json(*name) : Json();
}

Json callIsThisDate(Arguments& arguments, const Environment& environment) {
    return isThisDate(arguments.date(0), arguments.date(1), environment);
}

}  // namespace

const std::vector<Operation>& dateOperations() {
    static const std::vector<Operation> operations{
        {"daysBetweenDate", 2, 2, callDaysBetweenDate},
        {"dateFromYYMMDDStr", 1, 1, callDateFromYYMMDDStr},
        {"year", 1, 1, callYear},
        {"YYYYMMDDStrFromDate", 1, 1, textOfDate<YYYYMMDDStrFromDate>},
        {"janFirstThisYear", 0, 0, callJanFirstThisYear},
        {"dateFromYear", 3, 3, callDateFromYear},
        {"cleanseDate", 1, 1, callCleanseDate},
        {"dateByAddingDays", 4, 4, callDateByAddingDays},
        {"diffDate", 3, anyNumber, callDiffDate},
        {"componentOfDate", 2, 2, callComponentOfDate},
        {"mediumStyleFromDate", 1, 1, textOfDate<mediumStyleFromDate>},
        {"longStyleFromDate", 1, 1, textOfDate<longStyleFromDate>},
        {"shortStyleFromDate", 1, 1, textOfDate<shortStyleFromDate>},
        {"yearFromDate", 1, 1, textOfDate<yearFromDate>},
        {"monthFromDate", 1, 1, textOfDate<monthFromDate>},
        {"dayFromDate", 1, 1, textOfDate<dayFromDate>},
        {"currentYear", 0, 0, textOfNow<currentYear>},
        {"currentMonth", 0, 0, textOfNow<currentMonth>},
        {"currentDay", 0, 0, textOfNow<currentDay>},
        {"dayNameFromDate", 1, 1, textOfDate<dayNameFromDate>},
        {"shortDayNameFromDate", 1, 1, textOfDate<shortDayNameFromDate>},
        {"monthNameFromDate", 1, 1, textOfDate<monthNameFromDate>},
        {"weekDayNumberFromDate", 1, 1, numberOfDate<weekDayNumberFromDate>},
        {"monthNumberFromDate", 1, 1, numberOfDate<monthNumberFromDate>},
        {"monthNumberFromName", 1, 1, numberOfName<monthNumberFromName>},
        {"monthNameFromNumber", 1, 1, callMonthNameFromNumber},
        {"dayNumberFromName", 1, 1, numberOfName<dayNumberFromName>},
        {"daysInMonth", 1, 1, numberOfDate<daysInMonth>},
        {"isThisDate", 2, 2, callIsThisDate},
    };
    return operations;
}

}  // namespace kpx::runner
