#include "core/Predicate.h"

#include "core/TextPattern.h"
#include "values/FieldFinder.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <type_traits>

namespace kpx {

namespace {

/// One side of a comparison: a fixed value or the key under which a record holds it.
using Operand = std::variant<Value, FieldFinder>;

enum class Operator { Equal, Like, AtLeast, AtMost };

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

bool beginsKey(char c) {
    const char lower = lowered(c);
    return (lower >= 'a' && lower <= 'z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool continuesKey(char c) { return beginsKey(c) || isDigit(c) || c == '.'; }

bool isWord(std::string_view word, std::string_view lowerCaseWord) {
    return std::ranges::equal(word, lowerCaseWord, {}, lowered);
}

/// A number of any kind, wide enough for every integer and double.
std::optional<long double> numberOfValue(const Value& value) {
    return std::visit(
        [](const auto& content) -> std::optional<long double> {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(content)>>) {
                return static_cast<long double>(content);
            } else {
                return std::nullopt;
            }
        },
        value.variant());
}

/// Unordered for values of different kinds and for kinds that have no order.
std::partial_ordering compareValues(const Value& left, const Value& right) {
    if (const auto* text = left.as<Text>()) {
        const auto* other = right.as<Text>();
        return other ? text->view() <=> other->view() : std::partial_ordering::unordered;
    }
    if (const auto* date = left.as<Date>()) {
        const auto* other = right.as<Date>();
        return other ? *date <=> *other : std::partial_ordering::unordered;
    }
    const std::optional<long double> number = numberOfValue(left);
    const std::optional<long double> other = numberOfValue(right);
    return number && other ? *number <=> *other : std::partial_ordering::unordered;
}

bool equalValues(const Value& left, const Value& right) { return compareValues(left, right) == 0 || left == right; }

const Value* valueOfOperand(const Operand& operand, const Record& record) {
    const auto* key = std::get_if<FieldFinder>(&operand);
    return key ? key->in(record) : &std::get<Value>(operand);
}

}  // namespace

struct Predicate::Comparison {
    Operand left;
    Operator comparison = Operator::Equal;
    Operand right;
    Folding folding;
    std::optional<TextPattern> pattern;  ///< where the right side is a fixed text

    bool matches(const Record& record) const {
        const Value* leftValue = valueOfOperand(left, record);
        const Value* rightValue = valueOfOperand(right, record);
        if (!leftValue || !rightValue) {
            return false;
        }
        switch (comparison) {
            case Operator::Equal:
                return equalValues(*leftValue, *rightValue);
            case Operator::Like:
                return isLike(*leftValue, *rightValue);
            case Operator::AtLeast:
                return compareValues(*leftValue, *rightValue) >= 0;
            case Operator::AtMost:
                return compareValues(*leftValue, *rightValue) <= 0;
        }
        return false;
    }

private:
    bool isLike(const Value& leftValue, const Value& rightValue) const {
        const auto* patternText = rightValue.as<Text>();
        if (!patternText) {
            return false;
        }
        const auto* text = leftValue.as<Text>();
        const std::string_view compared = text ? text->view() : "";  // so that what is no text still matches "*"
        return pattern ? pattern->matches(compared) : TextPattern(*patternText, folding).matches(compared);
    }
};

class Predicate::Parser {
public:
    Parser(std::string_view format, std::vector<Value> arguments) : m_rest(format), m_arguments(std::move(arguments)) {}

    std::optional<std::vector<Comparison>> predicate() {
        std::vector<Comparison> comparisons;
        do {
            std::optional<Comparison> next = comparison();
            if (!next) {
                return std::nullopt;
            }
            comparisons.push_back(*std::move(next));
        } while (takeWord("and"));
        return m_rest.empty() ? std::optional(std::move(comparisons)) : std::nullopt;
    }

private:
    std::optional<Comparison> comparison() {
        std::optional<Operand> left = operand();
        if (!left) {
            return std::nullopt;
        }
        Comparison result{*std::move(left), Operator::Equal, Value(0), {}, std::nullopt};
        if (takeWord("like")) {
            result.comparison = Operator::Like;
            if (!takeOptions(result.folding)) {
                return std::nullopt;
            }
        } else if (take(">=")) {
            result.comparison = Operator::AtLeast;
        } else if (take("<=")) {
            result.comparison = Operator::AtMost;
        } else if (!take("==") && !take("=")) {
            return std::nullopt;
        }
        std::optional<Operand> right = operand();
        if (!right) {
            return std::nullopt;
        }
        result.right = *std::move(right);
        const auto* value = std::get_if<Value>(&result.right);
        const auto* text = value ? value->as<Text>() : nullptr;
        if (result.comparison == Operator::Like && text) {
            result.pattern.emplace(*text, result.folding);
        }
        return result;
    }

    std::optional<Operand> operand() {
        skipBlanks();
        if (m_rest.empty()) {
            return std::nullopt;
        }
        const char first = m_rest.front();
        if (first == '"' || first == '\'') {
            return literal(first);
        }
        if (take("%@")) {
            return hasArgument() ? std::optional<Operand>(nextArgument()) : std::nullopt;
        }
        if (take("%K")) {
            const Value argument = hasArgument() ? nextArgument() : Value(0);
            const auto* key = argument.as<Text>();
            return key ? std::optional<Operand>(FieldFinder(*key)) : std::nullopt;
        }
        return beginsKey(first) ? key() : number();
    }

    /// What stands between the quotes, as it is: a name may hold a backslash or "%@".
    std::optional<Operand> literal(char quote) {
        const std::size_t end = m_rest.find(quote, 1);
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        Operand result = Value(m_rest.substr(1, end - 1));
        m_rest.remove_prefix(end + 1);
        return result;
    }

    std::optional<Operand> key() {
        const std::string_view word = leadingWord();
        if (isWord(word, "and") || isWord(word, "like")) {
            return std::nullopt;
        }
        m_rest.remove_prefix(word.size());
        return Operand(FieldFinder(word));
    }

    std::optional<Operand> number() {
        const bool negative = m_rest.front() == '-';
        const std::size_t digits = negative ? 1 : 0;
        if (digits >= m_rest.size() || !(isDigit(m_rest[digits]) || m_rest[digits] == '.')) {
            return std::nullopt;
        }
        const char* const end = m_rest.data() + m_rest.size();
        std::int64_t integer = 0;
        double real = 0;
        const auto asInteger = std::from_chars(m_rest.data(), end, integer);
        const auto asReal = std::from_chars(m_rest.data(), end, real);
        if (asReal.ec != std::errc{} || (asReal.ptr != end && continuesKey(*asReal.ptr))) {
            return std::nullopt;
        }
        const bool whole = asInteger.ec == std::errc{} && asInteger.ptr == asReal.ptr;
        m_rest.remove_prefix(static_cast<std::size_t>(asReal.ptr - m_rest.data()));
        return Operand(whole ? Value(integer) : Value(real));
    }

    bool takeOptions(Folding& folding) {
        if (!take("[")) {
            return true;
        }
        const std::size_t end = m_rest.find(']');
        const std::string_view options = m_rest.substr(0, end);
        if (end == std::string_view::npos || options.empty()) {
            return false;
        }
        for (const char option : options) {
            if (lowered(option) == 'c') {
                folding.caseInsensitive = true;
            } else if (lowered(option) == 'd') {
                folding.diacriticInsensitive = true;
            } else {
                return false;
            }
        }
        m_rest.remove_prefix(end + 1);
        return true;
    }

    bool take(std::string_view symbol) {
        skipBlanks();
        const bool stands = m_rest.starts_with(symbol);
        m_rest.remove_prefix(stands ? symbol.size() : 0);
        return stands;
    }

    /// In capitals or not, and not as the beginning of a longer word.
    bool takeWord(std::string_view lowerCaseWord) {
        skipBlanks();
        const bool stands = isWord(leadingWord(), lowerCaseWord);
        m_rest.remove_prefix(stands ? lowerCaseWord.size() : 0);
        return stands;
    }

    std::string_view leadingWord() const {
        const auto end = std::ranges::find_if_not(m_rest, continuesKey);
        return m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
    }

    void skipBlanks() {
        const auto text = std::ranges::find_if_not(m_rest, isBlank);
        m_rest.remove_prefix(static_cast<std::size_t>(text - m_rest.begin()));
    }

    bool hasArgument() const { return m_nextArgument < m_arguments.size(); }
    Value nextArgument() { return m_arguments[m_nextArgument++]; }

    std::string_view m_rest;
    std::vector<Value> m_arguments;
    std::size_t m_nextArgument = 0;
};

std::optional<Predicate> Predicate::withFormat(std::string_view format, std::vector<Value> arguments) {
    std::optional<std::vector<Comparison>> comparisons = Parser(format, std::move(arguments)).predicate();
    if (!comparisons) {
        return std::nullopt;
    }
    Predicate predicate;
    predicate.m_comparisons = std::make_shared<const std::vector<Comparison>>(*std::move(comparisons));
    return predicate;
}

bool Predicate::matches(const Record& record) const {
    return std::ranges::all_of(*m_comparisons,
                               [&](const Comparison& comparison) { return comparison.matches(record); });
}

Records filteredRecords(Records records, const std::optional<Predicate>& predicate) {
    std::erase_if(records, [&](const Record& record) { return !predicate || !predicate->matches(record); });
    return records;
}

}  // namespace kpx
