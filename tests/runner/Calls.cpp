#include "tests/runner/Calls.h"

#include "tests/runner/Commands.h"

namespace kpx::runner {

template <typename Kind>
Kind Arguments::required(std::optional<Kind> value, std::size_t index, const char* what) {
    if (!value) {
        fail("argument " + std::to_string(index + 1) + " is no " + what);
        return Kind();
    }
    return std::move(*value);
}

int Arguments::integer(std::size_t index) {
    const auto number = required(integerFromWord(text(index)), index, "whole number");
    if (!std::in_range<int>(number)) {
        fail("argument " + std::to_string(index + 1) + " is too large");
        return 0;
    }
    return static_cast<int>(number);
}

double Arguments::number(std::size_t index) { return required(numberFromWord(text(index)), index, "number"); }

bool Arguments::yesOrNo(std::size_t index) {
    if (text(index) != "yes" && text(index) != "no") {
        fail("argument " + std::to_string(index + 1) + " is neither yes nor no");
    }
    return text(index) == "yes";
}

Date Arguments::date(std::size_t index) { return required(m_localTime.parse(text(index)), index, "date"); }

Records Arguments::records(std::size_t index) {
    return required(test::recordsFromJson(text(index), m_localTime), index, "JSON array of records");
}

Json Arguments::json(std::size_t index) { return required(test::parseJson(text(index)), index, "JSON"); }

Json callOperation(Session& session, const Words& words) {
    const std::string& name = words.front().text;
    const Words rest(words.begin() + 1, words.end());
    for (const auto* operations : {&dateOperations(), &textAndNumberOperations(), &recordOperations()}) {
        for (const Operation& operation : *operations) {
            if (name != operation.name) {
                continue;
            }
            if (rest.size() < operation.fewestArguments || rest.size() > operation.mostArguments) {
                return refused("wrong number of arguments for " + name);
            }
            Arguments arguments(rest, session.platform.localTime);
            Json value =
                operation.call(arguments, Environment{session.platform.clock.now(), session.platform.system.region()});
            if (arguments.error()) {
                return refused(*arguments.error());
            }
            Json result = done();
            result["value"] = std::move(value);
            return result;
        }
    }
    return refused("no operation is called " + name);
}

}  // namespace kpx::runner
