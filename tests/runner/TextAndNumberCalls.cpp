#include "costs/CostSummary.h"
#include "history/KPXNumberFormatter.h"
#include "region/Collation.h"
#include "region/Numbers.h"
#include "tests/runner/Calls.h"
#include "values/NumberText.h"

namespace kpx::runner {

namespace {

Json callCleanFormatCostStr(Arguments& arguments, const Environment& environment) {
    return arguments.count() == 0 ? cleanFormatCostStr(std::nullopt, environment)
                                  : cleanFormatCostStr(arguments.text(0), environment);
}

Json callFormatCostStrings(Arguments& arguments, const Environment&) { return formatCostStrings(arguments.number(0)); }

Json callFormatCurrency(Arguments& arguments, const Environment& environment) {
    return formatCurrency(arguments.number(0), environment);
}

Json callCopyFormatStringForTextField(Arguments& arguments, const Environment& environment) {
    return copyFormatStringForTextField(arguments.number(0), arguments.text(1), environment);
}

Json callIsItaNumber(Arguments& arguments, const Environment&) { return isItaNumber(arguments.text(0)); }

Json callIsPartialStringValid(Arguments& arguments, const Environment&) {
    const KPXNumberFormatter formatter(arguments.text(0), arguments.yesOrNo(1));
    const KPXNumberFormatter::Verdict verdict = formatter.isPartialStringValid(arguments.text(2));
    return Json{{"accepted", verdict.accepted},
                {"replacement", verdict.replacement ? Json(*verdict.replacement) : Json()}};
}

Json callSortArray(Arguments& arguments, const Environment& environment) {
    std::vector<std::string> titles;
    for (std::size_t index = 0; index < arguments.count(); ++index) {
        titles.push_back(arguments.text(index));
    }
    sortArray(titles, environment);
    return titles;
}

Json callSortNumberArray(Arguments& arguments, const Environment&) {
    std::vector<double> numbers;
    for (std::size_t index = 0; index < arguments.count(); ++index) {
        numbers.push_back(arguments.number(index));
    }
    sortNumberArray(numbers);
    Json value = Json::array();
    for (const double number : numbers) {
        value.push_back(test::numberToJson(number));
    }
    return value;
}

/// −1 for ascending, 0 for equal, 1 for descending.
template <Comparison comparison>
Json callCompare(Arguments& arguments, const Environment& environment) {
    const auto order = compareTexts(arguments.text(0), arguments.text(1), comparison, environment);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

Json callCalcElapsedMonths(Arguments& arguments, const Environment&) {
    return test::numberToJson(calcElapsedMonths(arguments.date(0), arguments.date(1)));
}

Json callCalcAvgCost(Arguments& arguments, const Environment&) {
    return test::numberToJson(calcAvgCost(arguments.number(0), arguments.number(1)));
}

}  // namespace

const std::vector<Operation>& textAndNumberOperations() {
    static const std::vector<Operation> operations{
        {"cleanFormatCostStr", 0, 1, callCleanFormatCostStr},
        {"formatCostStrings", 1, 1, callFormatCostStrings},
        {"formatCurrency", 1, 1, callFormatCurrency},
        {"copyFormatStringForTextField", 2, 2, callCopyFormatStringForTextField},
        {"isItaNumber", 1, 1, callIsItaNumber},
        {"isPartialStringValid", 3, 3, callIsPartialStringValid},
        {"sortArray", 0, anyNumber, callSortArray},
        {"sortNumberArray", 0, anyNumber, callSortNumberArray},
        {"compare", 2, 2, callCompare<Comparison::Plain>},
        {"localizedCaseInsensitiveCompare", 2, 2, callCompare<Comparison::LocalizedCaseInsensitive>},
        {"localizedStandardCompare", 2, 2, callCompare<Comparison::LocalizedStandard>},
        {"calcElapsedMonths", 2, 2, callCalcElapsedMonths},
        {"calcAvgCost", 2, 2, callCalcAvgCost},
    };
    return operations;
}

}  // namespace kpx::runner
