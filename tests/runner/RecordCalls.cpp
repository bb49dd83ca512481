#include "core/PopUpTitles.h"
#include "core/Predicate.h"
#include "core/Sorting.h"
#include "costs/CostSummary.h"
#include "plist/PropertyList.h"
#include "schedule/RefillSchedule.h"
#include "tests/runner/Calls.h"
#include "tests/runner/PredicateArguments.h"

#include <fstream>
#include <iterator>

namespace kpx::runner {

namespace {

std::optional<std::string> contentsOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

Json callReadPropertyList(Arguments& arguments, const Environment&) {
    const std::optional<std::string> bytes = contentsOf(arguments.text(0));
    const std::optional<Value> root = bytes ? readPropertyList(*bytes) : std::nullopt;
    return root ? test::toJson(*root, arguments.localTime()) : Json();
}

Json callWritePropertyList(Arguments& arguments, const Environment&) {
    const std::optional<Value> root = test::valueFromJson(arguments.json(1), arguments.localTime());
    const std::optional<std::string> bytes = root ? writePropertyList(*root) : std::nullopt;
    if (!bytes || arguments.error()) {
        return false;
    }
    std::ofstream stream(arguments.text(0), std::ios::binary);
    stream.write(bytes->data(), static_cast<std::streamsize>(bytes->size()));
    stream.close();
    return !stream.fail();
}

Json callEvaluatePredicate(Arguments& arguments, const Environment&) {
    const Records records = arguments.records(1);
    std::vector<std::string> words;
    for (std::size_t index = 2; index < arguments.count(); ++index) {
        words.push_back(arguments.text(index));
    }
    const auto predicate = Predicate::withFormat(
        arguments.text(0), predicateArguments(arguments.text(0), words, records, arguments.localTime()));
    if (!predicate) {
        return nullptr;
    }
    Json positions = Json::array();
    for (std::size_t position = 0; position < records.size(); ++position) {
        if (predicate->matches(records[position])) {
            positions.push_back(position);
        }
    }
    return positions;
}

Json callCopyUniqueKey(Arguments& arguments, const Environment&) {
    return copyUniqueKey(arguments.text(0), arguments.records(1));
}

Json callCopyFindDictInArray(Arguments& arguments, const Environment&) {
    const auto keyValue = [&](std::size_t index) { return KeyValue{arguments.text(index), arguments.text(index + 4)}; };
    return test::toJson(copyFindDictInArray(arguments.records(0), keyValue(1), keyValue(2), keyValue(3), keyValue(4)),
                        arguments.localTime());
}

Json callCopyDictContainingTitle(Arguments& arguments, const Environment&) {
    const Records records = arguments.records(2);
    const Record* found = copyDictContainingTitle(arguments.text(0), arguments.text(1), records);
    return found ? test::toJson(*found, arguments.localTime()) : Json();
}

Json callDoSortWithArray(Arguments& arguments, const Environment& environment) {
    const auto level = [&](std::size_t index) {
        SortDescriptor descriptor;
        if (index + 2 < arguments.count()) {
            const std::string& comparison = arguments.text(index + 2);
            descriptor = {arguments.text(index), arguments.yesOrNo(index + 1),
                          comparison == "compare"                           ? Comparison::Plain
                          : comparison == "localizedCaseInsensitiveCompare" ? Comparison::LocalizedCaseInsensitive
                                                                            : Comparison::LocalizedStandard};
        }
        return descriptor;
    };
    Records records = arguments.records(0);
    doSortWithArray(records, level(1), level(4), level(7), environment);
    return test::toJson(records, arguments.localTime());
}

Json callCalcTotalCost(Arguments& arguments, const Environment& environment) {
    return test::numberToJson(calcTotalCost(arguments.records(0), arguments.text(1), environment));
}

/// An operation that removes records in place.
template <void (*function)(Records&, const Environment&)>
Json callNarrowing(Arguments& arguments, const Environment& environment) {
    Records records = arguments.records(0);
    function(records, environment);
    return test::toJson(records, arguments.localTime());
}

Json callCopyMaintDueArray(Arguments& arguments, const Environment& environment) {
    return test::toJson(copyMaintDueArrayForTVFromFilteredArray(arguments.records(0), environment),
                        arguments.localTime());
}

}  // namespace

const std::vector<Operation>& recordOperations() {
    static const std::vector<Operation> operations{
        {"readPropertyList", 1, 1, callReadPropertyList},
        {"writePropertyList", 2, 2, callWritePropertyList},
        {"evaluatePredicate", 2, anyNumber, callEvaluatePredicate},
        {"copyUniqueKey", 2, 2, callCopyUniqueKey},
        {"copyFindDictInArray", 9, 9, callCopyFindDictInArray},
        {"copyDictContainingTitle", 3, 3, callCopyDictContainingTitle},
        {"doSortWithArray", 4, 10, callDoSortWithArray},
        {"calcTotalCost", 2, 2, callCalcTotalCost},
        {"removeDictsWithEarlierDispenseDate", 1, 1, callNarrowing<removeDictsWithEarlierDispenseDate>},
        {"overDueOnly", 1, 1, callNarrowing<overDueOnly>},
        {"expiredOnly", 1, 1, callNarrowing<expiredOnly>},
        {"copyMaintDueArrayForTVFromFilteredArray", 1, 1, callCopyMaintDueArray},
    };
    return operations;
}

}  // namespace kpx::runner
