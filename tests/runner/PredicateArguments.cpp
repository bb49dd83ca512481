#include "tests/runner/PredicateArguments.h"

#include "tests/runner/Script.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace kpx::runner {

namespace {

/// The operands of the format in their order, in pairs as they are compared; quoted literals are empty.
std::vector<std::string> operandsOf(const std::string& format) {
    std::vector<std::string> operands;
    for (std::size_t position = 0; position < format.size();) {
        const char first = format[position];
        if (first == '"' || first == '\'') {
            const std::size_t end = format.find(first, position + 1);
            operands.emplace_back();
            position = end == std::string::npos ? format.size() : end + 1;
        } else if (std::isspace(static_cast<unsigned char>(first)) ||
                   std::string("=<>!").find(first) != std::string::npos) {
            ++position;
        } else {
            const std::size_t end = std::min(format.find_first_of(" \t\r\n=<>!\"'", position), format.size());
            const std::string word = format.substr(position, end - position);
            if (word != "AND" && word != "LIKE" && word != "LIKE[cd]") {
                operands.push_back(word);
            }
            position = end;
        }
    }
    return operands;
}

Value valueLike(const Value* example, const std::string& word, const test::LocalTime& localTime) {
    if (example && example->as<Date>()) {
        if (const auto date = localTime.parse(word)) {
            return *date;
        }
    }
    if (example && example->as<std::int64_t>()) {
        if (const auto number = integerFromWord(word)) {
            return static_cast<std::int64_t>(*number);
        }
    }
    if (example && (example->as<std::int64_t>() || example->as<double>())) {
        if (const auto number = numberFromWord(word)) {
            return *number;
        }
    }
    return word;
}

const Value* exampleUnder(const std::string& key, const Records& records) {
    for (const Record& record : records) {
        if (const Value* value = record.find(key)) {
            return value;
        }
    }
    return nullptr;
}

}  // namespace

std::vector<Value> predicateArguments(const std::string& format, const std::vector<std::string>& words,
                                      const Records& records, const test::LocalTime& localTime) {
    // Which argument each operand takes, so that a key named by "%K" is known as well.
    const std::vector<std::string> operands = operandsOf(format);
    std::vector<std::optional<std::size_t>> wordOfOperand;
    std::size_t used = 0;
    for (const std::string& operand : operands) {
        const bool placeholder = operand == "%@" || operand == "%K";
        wordOfOperand.push_back(placeholder && used < words.size() ? std::optional(used++) : std::nullopt);
    }
    std::vector<Value> values(words.begin(), words.end());
    for (std::size_t index = 0; index < operands.size(); ++index) {
        const std::size_t other = index ^ 1U;
        if (operands[index] != "%@" || !wordOfOperand[index] || other >= operands.size()) {
            continue;
        }
        const bool namedByArgument = operands[other] == "%K" && wordOfOperand[other];
        const std::string& key = namedByArgument ? words[*wordOfOperand[other]] : operands[other];
        values[*wordOfOperand[index]] = valueLike(exampleUnder(key, records), words[*wordOfOperand[index]], localTime);
    }
    return values;
}

}  // namespace kpx::runner
